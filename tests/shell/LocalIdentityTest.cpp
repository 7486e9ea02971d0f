#include "shell/LocalIdentity.h"

#include "shell/RunTimeFault.h"

#include <gtest/gtest.h>

namespace {

// A routing table as /proc/net/route gives it: eth0 and wlan0 both have a
// default route through a gateway, docker0 only a route of its own network,
// and tun0 a default route without a gateway.
const char* const SampleRoutes =
    "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n"
    "eth0\t00000000\t0101A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0\n"
    "wlan0\t00000000\t01000A0A\t0003\t0\t0\t600\t00000000\t0\t0\t0\n"
    "tun0\t00000000\t00000000\t0001\t0\t0\t50\t00000000\t0\t0\t0\n"
    "eth0\t0001A8C0\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n"
    "docker0\t000011AC\t00000000\t0001\t0\t0\t0\t0000FFFF\t0\t0\t0\n";

TEST(LocalIdentity, InterfacesWithADefaultGatewayFromTheRoutingTable)
{
    EXPECT_EQ(vk::InterfacesWithDefaultGateway(SampleRoutes), (std::vector<std::string>{"eth0", "wlan0"}));
}

TEST(LocalIdentity, RouteThatIsDownDoesNotCount)
{
    const char* routes = "Iface\tDestination\tGateway\tFlags\tRefCnt\tUse\tMetric\tMask\tMTU\tWindow\tIRTT\n"
                         "eth0\t00000000\t0101A8C0\t0002\t0\t0\t100\t00000000\t0\t0\t0\n";
    EXPECT_TRUE(vk::InterfacesWithDefaultGateway(routes).empty());
}

TEST(LocalIdentity, LastAdapterWithAGatewayWins)
{
    const std::vector<vk::NetworkAdapter> adapters = {
        {"lo", "00:00:00:00:00:00", false},
        {"eth0", "00:1A:2B:3C:4D:5E", true},
        {"docker0", "02:42:AC:11:00:01", true},
        {"wlan0", "A4:B1:C2:D3:E4:F5", true},
    };
    EXPECT_EQ(vk::LocalIdFromAdapters(adapters, vk::InterfacesWithDefaultGateway(SampleRoutes)), "A4B1C2D3E4F5");
}

TEST(LocalIdentity, AdapterThatIsNotIpEnabledIsSkipped)
{
    const std::vector<vk::NetworkAdapter> adapters = {
        {"eth0", "00:1A:2B:3C:4D:5E", true},
        {"wlan0", "A4:B1:C2:D3:E4:F5", false},
    };
    EXPECT_EQ(vk::LocalIdFromAdapters(adapters, vk::InterfacesWithDefaultGateway(SampleRoutes)), "001A2B3C4D5E");
}

TEST(LocalIdentity, AddressOfAnotherLengthGivesNothing)
{
    const std::vector<vk::NetworkAdapter> adapters = {{"eth0", "00:1A:2B:3C:4D:5E:6F:70", true}};
    EXPECT_EQ(vk::LocalIdFromAdapters(adapters, {"eth0"}), "");
    EXPECT_EQ(vk::LocalIdFromAdapters({{"eth0", "", true}}, {"eth0"}), "");
}

TEST(LocalIdentity, NoGatewayGivesNothing)
{
    const std::vector<vk::NetworkAdapter> adapters = {{"eth0", "00:1A:2B:3C:4D:5E", true}};
    EXPECT_EQ(vk::LocalIdFromAdapters(adapters, {}), "");
}

TEST(LocalIdentity, FallbackBeforeTheDiceTableIsTwelveZeros)
{
    vk::DiceTable table{};
    EXPECT_EQ(vk::FallbackLocalId(table), "000000000000");
}

TEST(LocalIdentity, FallbackOfAFilledTableRepeatsSixteenTimesTheFirstEntry)
{
    vk::DiceTable table{};
    table[0] = 5;
    EXPECT_EQ(vk::FallbackLocalId(table), "505050505050505050505050");
    table[0] = -1;
    std::string negative;
    for (int i = 0; i < 12; ++i)
        negative += "FFF0";
    EXPECT_EQ(vk::FallbackLocalId(table), negative);
    table[0] = 4096;
    EXPECT_THROW(vk::FallbackLocalId(table), vk::RunTimeFault);
}

} // namespace
