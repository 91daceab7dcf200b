// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// An IPv4 address, most significant byte first, as dotted decimal text ("192.168.1.1").
QString IPV4IntegerToString(unsigned int value);

/// The low 48 bits of a MAC address, most significant byte first, as six decimal numbers joined by dots
/// ("0.26.43.60.77.94").
QString MACIntegerToString(unsigned long long value);

/// The inverse of IPV4IntegerToString(), as a signed 32-bit pattern. A text without exactly four parts gives 0;
/// a part that is no number counts as 0; parts are not range-checked, so a larger one spills into its neighbours.
int IPV4StringToInteger(const QString &text);
