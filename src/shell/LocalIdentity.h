#pragma once

// The identity of this PC, LocalID: twelve hexadecimal digits taken from the
// MAC address of the last network adapter that has a default gateway. Two
// copies tell each other apart by it and by nothing else.

#include "game/DiceTable.h"

#include <string>
#include <string_view>
#include <vector>

namespace vk {

struct NetworkAdapter {
    std::string Name;         // interface name as the routing table names it
    std::string MacAddress;   // "00:1A:2B:3C:4D:5E"
    bool IpEnabled = false;   // up, with an address
};

// The interfaces that have a default gateway, in the order of the routing
// table's text (as /proc/net/route gives it): a route to 0.0.0.0/0 that is
// up and goes through a gateway.
std::vector<std::string> InterfacesWithDefaultGateway(std::string_view routeTable);

// The MAC address of the last IP-enabled adapter, in the adapters' order, that
// has a default gateway, as twelve characters without separators; empty when
// there is none or its address is not exactly 17 characters long.
std::string LocalIdFromAdapters(const std::vector<NetworkAdapter>& adapters,
                                const std::vector<std::string>& gatewayInterfaces);

// The fallback when no adapter gives an identity: twelve times the hexadecimal
// text of 16 times the first entry of the dice table. It is built before the
// dice table, when that entry is 0, so it always reads "000000000000".
std::string FallbackLocalId(const DiceTable& diceTable);

// The hexadecimal text of a 16-bit integer, negative numbers in two's complement.
std::string HexText(std::int16_t value);

} // namespace vk
