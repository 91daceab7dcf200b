// SPDX-License-Identifier: MIT
// Addresses as text: in the tree, and as features take and give them.
#include <QString>

#include "FeatureTree/AddressText.h"
#include "GenApi/src/NumberText.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    Fuzz::Bytes bytes(data, size);
    const auto number = bytes.take<uint64_t>();
    const auto ipv4 = uint32_t(number);
    const int64_t mac = int64_t(number & 0xffffffffffff);
    const std::string text = bytes.rest();

    Fuzz::expect(uint32_t(IPV4StringToInteger(IPV4IntegerToString(ipv4))) == ipv4, "an address survives as text");
    Fuzz::expect(MACIntegerToString(number) == MACIntegerToString(uint64_t(mac)), "a MAC address has 48 bits");
    IPV4StringToInteger(QString::fromStdString(text));

    Fuzz::expect(NodeEngine::ipv4OfText(NodeEngine::ipv4Text(ipv4)) == int64_t(ipv4), "an IPv4 value survives");
    Fuzz::expect(NodeEngine::macOfText(NodeEngine::macText(mac)) == mac, "a MAC value survives");
    if (const auto value = NodeEngine::ipv4OfText(text))
        Fuzz::expect(*value >= 0 && *value <= 0xffffffff, "an IPv4 value has 32 bits");
    if (const auto value = NodeEngine::macOfText(text))
        Fuzz::expect(*value >= 0 && *value <= 0xffffffffffff, "a MAC value has 48 bits");
    return 0;
}
