// SPDX-License-Identifier: MIT
// Texts of people, of the host and of the device that are read as numbers, and the steps between numbers.
#include <QLocale>

#include <GenApi/GenApi.h>

#include <cmath>
#include <limits>

#include "FeatureTree/FloatText.h"
#include "GenApi/src/NumberText.h"
#include "PanelBase/NumberSteps.h"
#include "PanelBase/NumberText.h"
#include "ParamterWidget/AttributeTab.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PanelContext.h"
#include "fuzz/Fuzz.h"
#include "support/FakeHostCore.h"

namespace {

void readTyped(const QString &text)
{
    const QLocale locales[] = {QLocale::c(), QLocale(QLocale::German), QLocale(QLocale::Arabic, QLocale::Egypt)};
    for (const QLocale &locale : locales) {
        if (const auto number = NumberText::parse<qint64>(text, locale))
            Fuzz::expect(NumberText::parse<qint64>(NumberText::limit(*number), locale) == number, "a number survives");
        if (const auto number = NumberText::parse<double>(text, locale)) {
            Fuzz::expect(std::isfinite(*number), "a number is finite");
            Fuzz::expect(NumberText::parse<double>(floatText(*number), locale).has_value(), "its text is a number");
        }
    }
}

void readOfHost(const std::string &text)
{
    const int level = attributeLevelFromText(text);
    Fuzz::expect(level >= GenApi::Beginner && level <= GenApi::Guru, "a level exists");
    static PanelContext context;
    context.deviceName = QStringLiteral("camera");
    context.logged.clear();
    FakeHostCore::instance().reset();
    FakeHostCore::instance().setNodeValue("camera", "Gain", text);
    if (const auto number = HostValues::readNumber(context, "Gain"))
        Fuzz::expect(std::isfinite(*number), "a value of the host is finite");
}

void readOfDescription(const std::string &text)
{
    NodeEngine::integerOfDescription(text);
    NodeEngine::floatOfDescription(text);
    NodeEngine::integerOfText(text);
    if (const auto number = NodeEngine::floatOfText(text); number && !std::isnan(*number))
        NodeEngine::saturatedInteger(*number);
}

template <class Number>
void step(Fuzz::Bytes &bytes)
{
    const Number minimum = bytes.take<Number>();
    const Number maximum = bytes.take<Number>();
    const NumberSteps<Number> steps{minimum, maximum, bytes.take<Number>(), bool(bytes.take<uint8_t>() & 1)};
    const Number value = bytes.take<Number>();
    const Number next = steps.from(value, bytes.take<int32_t>());
    if (minimum <= value && value <= maximum)
        Fuzz::expect(minimum <= next && next <= maximum, "steps stay within the limits");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const std::string text = Fuzz::Bytes(data, size).rest();
    readTyped(QString::fromStdString(text));
    readOfHost(text);
    readOfDescription(text);
    Fuzz::Bytes bytes(data, size);
    step<qint64>(bytes);
    step<double>(bytes);
    return 0;
}
