#include "shell/LocalIdentity.h"

#include "shell/RunTimeFault.h"

#include <cstdio>
#include <sstream>

namespace vk {

namespace {

constexpr unsigned RouteUp = 0x0001;
constexpr unsigned RouteGateway = 0x0002;

std::vector<std::string> Fields(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream in(line);
    std::string field;
    while (in >> field)
        fields.push_back(field);
    return fields;
}

} // namespace

std::vector<std::string> InterfacesWithDefaultGateway(std::string_view routeTable)
{
    // Iface Destination Gateway Flags RefCnt Use Metric Mask MTU Window IRTT,
    // addresses and flags in hexadecimal.
    std::vector<std::string> names;
    std::istringstream in{std::string(routeTable)};
    std::string line;
    bool header = true;
    while (std::getline(in, line)) {
        if (header) {
            header = false;
            continue;
        }
        const std::vector<std::string> f = Fields(line);
        if (f.size() < 8)
            continue;
        unsigned flags = 0;
        if (std::sscanf(f[3].c_str(), "%x", &flags) != 1)
            continue;
        const bool defaultRoute = f[1] == "00000000" && f[7] == "00000000";
        if (defaultRoute && (flags & RouteUp) && (flags & RouteGateway) && f[2] != "00000000")
            names.push_back(f[0]);
    }
    return names;
}

std::string LocalIdFromAdapters(const std::vector<NetworkAdapter>& adapters,
                                const std::vector<std::string>& gatewayInterfaces)
{
    std::string mac;
    for (const NetworkAdapter& adapter : adapters) {
        if (!adapter.IpEnabled)
            continue;
        for (const std::string& name : gatewayInterfaces)
            if (name == adapter.Name)
                mac = adapter.MacAddress;   // a later adapter overwrites an earlier one
    }
    if (mac.size() != 17)
        return {};
    std::string id;
    for (std::size_t position = 0; position < 17; position += 3)
        id += mac.substr(position, 2);
    return id;
}

std::string HexText(std::int16_t value)
{
    char text[8];
    std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(static_cast<std::uint16_t>(value)));
    return text;
}

std::string FallbackLocalId(const DiceTable& diceTable)
{
    const int product = 16 * diceTable[0];
    if (product > 32767 || product < -32768)
        throw RunTimeFault("Overflow");
    std::string id;
    for (int i = 0; i < 12; ++i)
        id += HexText(static_cast<std::int16_t>(product));
    return id;
}

} // namespace vk
