// SPDX-License-Identifier: MIT
#include <QtTest>

#include <GenApi/GenApi.h>
#include <GenApi/NodeMapRef.h>

#include <sstream>

using namespace GenApi;
using GenICam::GenericException;

namespace {

QByteArray bytes(const gcstring &text)
{
    return QByteArray(text.c_str(), int(text.size()));
}

// True if none of them is caught as another one.
template <class Exception, class... All>
constexpr bool IsApart = (std::is_base_of_v<All, Exception> + ...) == 1;
template <class... Exceptions>
constexpr bool AreApart = (IsApart<Exceptions, Exceptions...> && ...);
static_assert(
    AreApart<std::exception, GenICam::AccessException, GenICam::OutOfRangeException, GenICam::InvalidArgumentException,
             GenICam::TimeoutException, GenICam::RuntimeException, GenICam::LogicalErrorException,
             GenICam::PropertyException, GenICam::DynamicCastException, GenICam::BadAllocException>);

template <class Enum, class Class>
void checkTexts(std::initializer_list<Enum> values)
{
    for (Enum value : values) {
        Enum parsed = Enum(-1);
        gcstring text;
        Class::ToString(text, &value);
        QVERIFY(Class::FromString(text, &parsed) && parsed == value && Class::ToString(value) == text);
    }
}

} // namespace

class tst_BaseTypes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stringKeepsBytesAndTakesNull()
    {
        const gcstring binary("a\0b", 3);
        QCOMPARE(binary.size(), size_t(3));
        QCOMPARE(bytes(binary + gcstring(2, '-')), QByteArray("a\0b--", 5));
        QVERIFY(binary != gcstring("a") && gcstring("a") < binary && gcstring("\xE6\x9B\x9D") > gcstring("a"));
        std::ostringstream out;
        out << binary << gcstring(" c");
        QCOMPARE(out.str(), std::string("a\0b c", 5));
        std::istringstream in("first rest of line\nsecond");
        gcstring word, rest;
        getline(in >> word, rest);
        QVERIFY(word == "first" && rest == " rest of line");
        const char *null = nullptr;
        gcstring text(null);
        text += null;
        text = null;
        text.assign(null);
        QVERIFY(text.empty() && text == null && gcstring(null, 5).empty() && gcstring("a").find(null) == 0);
    }

    void stringEdits()
    {
        gcstring text = "Expo";
        text += "sure";
        text += 'T';
        text.append("ime");
        QVERIFY("<" + text + ">" == "<ExposureTime>");
        QVERIFY(text.substr(8) == "Time" && text.substr(0, 4) == "Expo");
        QVERIFY(text.find("sure") == 4 && text.find('x', 2) == gcstring::npos && text.find("Gain") == GCSTRING_NPOS);
        QVERIFY(text.compare("ExposureTime") == 0 && text.compare("A") > 0 && text.compare("F") < 0);
        gcstring other = "Gain";
        text.swap(other);
        other.erase(8);
        QVERIFY(text == "Gain" && other == "Exposure");
        other.resize(4);
        QCOMPARE(bytes(other.assign(other)), QByteArray("Expo"));
    }

    void listsEdit()
    {
        node_vector nodes(3);
        INode *const marker = reinterpret_cast<INode *>(quintptr(8)); // only compared, never followed
        nodes.insert(nodes.begin() + 1, marker);
        QVERIFY(nodes.size() == 4 && nodes.at(1) == marker);
        nodes.erase(nodes.begin());
        QVERIFY(nodes.front() == marker && !nodes.back());
        nodes.pop_back();
        nodes.resize(1);
        QVERIFY(nodes.size() == 1 && nodes[0] == marker);
        gcstring_vector list(2, "x");
        list.push_back("Width");
        QVERIFY(list.size() == 3 && list.contains("Width") && !list.contains("width") && list[0] == "x");
    }

    void exceptionTexts()
    {
        using Access = GenICam::AccessException;
        const std::pair<Access, const char *> rows[] = {
            {Access("the text", "/a/b/file.cpp", 12), "the text (file 'file.cpp', line 12)"},
            {Access("the text", "file.cpp", 12, "AccessException"),
             "the text : AccessException thrown (file 'file.cpp', line 12)"},
            {Access("Node is not readable.", "f.h", 152, "IntWO.GetValue()", "IntWO", "AccessException"),
             "Node is not readable. : AccessException thrown in node 'IntWO' while calling 'IntWO.GetValue()' "
             "(file 'f.h', line 152)"},
            {Access(nullptr, nullptr, 0), " (file '', line 0)"}};
        for (const auto &[exception, expected] : rows)
            QCOMPARE(exception.what(), expected);
    }

    void exceptionMacrosFormat()
    {
        const unsigned line = __LINE__ + 1;
        const GenICam::OutOfRangeException error = OUT_OF_RANGE_EXCEPTION("Value = %d is above %s", 12, "Max");
        QCOMPARE(error.GetDescription(), "Value = 12 is above Max");
        QCOMPARE(error.GetSourceLine(), line);
        QVERIFY(QByteArray(error.GetSourceFileName()).endsWith("tst_BaseTypes.cpp"));
        QVERIFY(QByteArray(error.what()).contains("OutOfRangeException thrown"));
        const std::string large(5000, 'x');
        QVERIFY(large.find(RUNTIME_EXCEPTION("%s", large.c_str()).GetDescription()) == 0);
        const GenericException copy = error;
        QCOMPARE(copy.what(), error.what());
    }

    void enumerationTexts()
    {
        checkTexts<EAccessMode, EAccessModeClass>({NI, NA, WO, RO, RW});
        checkTexts<EVisibility, EVisibilityClass>({Beginner, Expert, Guru, Invisible});
        checkTexts<ERepresentation, ERepresentationClass>(
            {Linear, Logarithmic, Boolean, PureNumber, HexNumber, IPV4Address, MACAddress});
        checkTexts<EIncMode, EIncModeClass>({noIncrement, fixedIncrement, listIncrement});
        checkTexts<ENameSpace, ENameSpaceClass>({Custom, Standard});
        checkTexts<ECachingMode, ECachingModeClass>({NoCache, WriteThrough, WriteAround});
        checkTexts<EDisplayNotation, EDisplayNotationClass>({fnAutomatic, fnFixed, fnScientific});
        checkTexts<EYesNo, EYesNoClass>({Yes, No});
        checkTexts<EEndianess, EEndianessClass>({BigEndian, LittleEndian});
        checkTexts<ESign, ESignClass>({Signed, Unsigned});
        checkTexts<ESlope, ESlopeClass>({Increasing, Decreasing, Varying, Automatic});
        QCOMPARE(bytes(EAccessModeClass::ToString(RW)), QByteArray("RW"));
        QCOMPARE(bytes(EDisplayNotationClass::ToString(fnFixed)), QByteArray("Fixed"));
        QCOMPARE(bytes(EVisibilityClass::ToString(EVisibility(7))), QByteArray("_UndefinedVisibility"));
        EVisibility visibility = Guru;
        QVERIFY(!EVisibilityClass::FromString("guru", &visibility));
        QCOMPARE(int(visibility), int(_UndefinedVisibility));
        EIncMode mode = listIncrement;
        QVERIFY(!EIncModeClass::FromString("", &mode));
        QCOMPARE(int(mode), int(noIncrement));
    }

    void accessTests()
    {
        struct Node : IBase
        {
            EAccessMode mode = NI;
            EAccessMode GetAccessMode() const override { return mode; }
        };
        // implemented, available, readable, writable
        const std::pair<EAccessMode, std::string> rows[] = {
            {NI, "----"}, {NA, "i---"}, {WO, "ia-w"}, {RO, "iar-"}, {RW, "iarw"}};
        for (const auto &[mode, expected] : rows) {
            Node node;
            node.mode = mode;
            const IBase &base = node;
            const auto passed = [](const auto &tested) {
                return std::string(IsImplemented(tested) ? "i" : "-") + (IsAvailable(tested) ? "a" : "-")
                    + (IsReadable(tested) ? "r" : "-") + (IsWritable(tested) ? "w" : "-");
            };
            QCOMPARE(passed(mode), expected);
            QCOMPARE(passed(base), expected);
            QCOMPARE(passed(&base), expected);
            QCOMPARE(passed(CBasePtr(&node)), expected);
        }
    }

    void nullPointersAndReferencesThrow()
    {
        const CIntegerPtr pointer;
        const CFloatPtr real(static_cast<INode *>(nullptr));
        QVERIFY(!pointer && !pointer.IsValid() && pointer == 0 && pointer == nullptr);
        QVERIFY(!IsReadable(pointer) && !IsImplemented(static_cast<const IBase *>(nullptr)));
        QVERIFY(!real.GetIntAlias() && !real.GetEnumAlias());
        QVERIFY_EXCEPTION_THROWN(pointer->GetValue(), GenICam::LogicalErrorException);
        QVERIFY_EXCEPTION_THROWN((*pointer)(), GenICam::LogicalErrorException);
        QVERIFY_EXCEPTION_THROWN(static_cast<IInteger *>(pointer), GenICam::LogicalErrorException);
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(pointer == 1), GenICam::LogicalErrorException);
        const CNodeMapRef map;
        QVERIFY_EXCEPTION_THROWN(map._GetNode("Width"), GenICam::LogicalErrorException);
        QVERIFY_EXCEPTION_THROWN(map._Connect(nullptr), GenICam::LogicalErrorException);
    }
};

QTEST_APPLESS_MAIN(tst_BaseTypes)
#include "tst_BaseTypes.moc"
