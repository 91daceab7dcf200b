// SPDX-License-Identifier: MIT
#include <QtTest>

#include <GenApi/GenApi.h>
#include <GenApi/NodeMapRef.h>

#include <sstream>
#include <thread>

using namespace GenApi;
using GenICam::GenericException;

namespace {

QByteArray bytes(const gcstring &text)
{
    return QByteArray(text.c_str(), int(text.size()));
}

// True if only the exception's own type and the base catch it.
template <class Exception, class Other>
bool isCaughtAsItself()
{
    try {
        throw Exception("text", "file.cpp", 1);
    } catch (const Other &) {
        return false;
    } catch (const GenericException &error) {
        return dynamic_cast<const Exception *>(&error) != nullptr;
    }
}

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
        QVERIFY(binary != gcstring("a"));
        QVERIFY(gcstring("a") < binary);
        QVERIFY(gcstring("\xE6\x9B\x9D") > gcstring("a"));
        const gcstring utf8("\xE6\x9B\x9D");
        const char *converted = utf8;
        QCOMPARE(QString::fromUtf8(converted), QStringLiteral("\u66DD"));
        std::ostringstream out;
        out << binary << gcstring(" c");
        QCOMPARE(out.str(), std::string("a\0b c", 5));
        std::istringstream in("first rest of line\nsecond");
        gcstring word;
        in >> word;
        QVERIFY(word == "first");
        getline(in, word);
        QVERIFY(word == " rest of line");
        const char *null = nullptr;
        gcstring text(null);
        text += null;
        text = null;
        text.assign(null);
        QVERIFY(text.empty());
        QVERIFY(text == null);
        QVERIFY(gcstring(null, 5).empty());
        QCOMPARE(gcstring("a").find(null), size_t(0));
    }

    void stringEdits()
    {
        gcstring text = "Expo";
        text += "sure";
        text += 'T';
        text.append("ime");
        QVERIFY(text == "ExposureTime");
        QVERIFY("<" + text + ">" == "<ExposureTime>");
        QVERIFY(text.substr(8) == "Time" && text.substr(0, 4) == "Expo");
        QCOMPARE(text.find("sure"), size_t(4));
        QCOMPARE(text.find('x', 2), gcstring::npos);
        QCOMPARE(text.find("Gain"), size_t(GCSTRING_NPOS));
        QVERIFY(text.compare("ExposureTime") == 0 && text.compare("A") > 0 && text.compare("F") < 0);
        gcstring other = "Gain";
        text.swap(other);
        QVERIFY(text == "Gain" && other == "ExposureTime");
        other.erase(8);
        QVERIFY(other == "Exposure");
        other.resize(4);
        QCOMPARE(bytes(other.assign(other)), QByteArray("Expo"));
    }

    void listsEdit()
    {
        node_vector nodes(3);
        QVERIFY(nodes.size() == 3 && !nodes[2]);
        INode *const marker = reinterpret_cast<INode *>(quintptr(8)); // only compared, never followed
        nodes.insert(nodes.begin() + 1, marker);
        QVERIFY(nodes.size() == 4 && nodes.at(1) == marker);
        QCOMPARE(std::find(nodes.begin(), nodes.end(), marker) - nodes.begin(), std::ptrdiff_t(1));
        nodes.erase(nodes.begin());
        QVERIFY(nodes.front() == marker && !nodes.back());
        nodes.pop_back();
        nodes.resize(1);
        QVERIFY(nodes.size() == 1 && nodes[0] == marker);
        gcstring_vector list(2, "x");
        list.push_back("Width");
        QVERIFY(list.contains("Width") && !list.contains("width") && list[0] == "x");
        gcstring_vector copy = list;
        copy.clear();
        QVERIFY(copy.empty() && list.size() == 3);
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

    void exceptionTypesAreApart()
    {
        QVERIFY((isCaughtAsItself<GenICam::AccessException, std::exception>()));
        QVERIFY((isCaughtAsItself<GenICam::OutOfRangeException, GenICam::InvalidArgumentException>()));
        QVERIFY((isCaughtAsItself<GenICam::TimeoutException, GenICam::RuntimeException>()));
        QVERIFY((isCaughtAsItself<GenICam::LogicalErrorException, GenICam::PropertyException>()));
        QVERIFY((isCaughtAsItself<GenICam::DynamicCastException, GenICam::BadAllocException>()));
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

    void lockIsRecursiveAndExclusive()
    {
        CLock lock;
        const auto takenElsewhere = [&lock] {
            bool taken = false;
            std::thread([&] {
                taken = lock.TryLock();
                if (taken)
                    lock.Unlock();
            }).join();
            return taken;
        };
        {
            const AutoLock outer(lock);
            {
                const AutoLock inner(lock);
                QVERIFY(!takenElsewhere());
            }
            QVERIFY(!takenElsewhere());
        }
        QVERIFY(takenElsewhere());
    }
};

QTEST_APPLESS_MAIN(tst_BaseTypes)
#include "tst_BaseTypes.moc"
