// SPDX-License-Identifier: MIT
#include "Simulation/RegisterLayout.h"

#include <algorithm>
#include <iterator>

#include <QXmlStreamReader>

namespace {

struct KindName
{
    QLatin1String element;
    Register::Kind kind;
};

const KindName KindNames[] = {
    {QLatin1String("IntReg"), Register::Kind::Integer}, {QLatin1String("MaskedIntReg"), Register::Kind::Integer},
    {QLatin1String("FloatReg"), Register::Kind::Real},  {QLatin1String("StringReg"), Register::Kind::Text},
    {QLatin1String("Register"), Register::Kind::Bytes},
};

void readProperty(Register &reg, const QString &element, const QString &text)
{
    const auto number = [&text] { return text.toLongLong(nullptr, 0); };
    const auto bits = [&reg](int first, int last) {
        reg.firstBit = first;
        reg.bitCount = last - first + 1;
    };
    if (element == QLatin1String("Address"))
        reg.address = number();
    else if (element == QLatin1String("Length"))
        reg.length = int(number());
    else if (element == QLatin1String("Sign"))
        reg.isSigned = text == QLatin1String("Signed");
    else if (element == QLatin1String("Bit"))
        bits(int(number()), int(number()));
    else if (element == QLatin1String("LSB"))
        reg.firstBit = int(number());
    else if (element == QLatin1String("MSB"))
        bits(reg.firstBit, int(number()));
    else if (element == QLatin1String("pInvalidator"))
        reg.inUserSet = reg.inUserSet || text == QLatin1String("UserSetLoad");
}

Register readRegister(QXmlStreamReader &xml, Register::Kind kind)
{
    Register reg;
    reg.kind = kind;
    reg.name = xml.attributes().value(QLatin1String("Name")).toUtf8();
    if (reg.name.endsWith("Reg"))
        reg.name.chop(3);
    while (xml.readNextStartElement()) {
        const QString element = xml.name().toString();
        readProperty(reg, element, xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed());
    }
    return reg;
}

} // namespace

std::vector<Register> registerLayout(const QByteArray &description)
{
    std::vector<Register> registers;
    QXmlStreamReader xml(description);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto found = std::find_if(std::begin(KindNames), std::end(KindNames),
                                        [&xml](const KindName &entry) { return xml.name() == entry.element; });
        if (found != std::end(KindNames))
            registers.push_back(readRegister(xml, found->kind));
    }
    return registers;
}
