// SPDX-License-Identifier: MIT
// The text of settings files, good and bad.
#include "TableRows.h"

#include <Base/GCException.h>
#include <GenApi/PersistenceFile.h>

#include <QTest>

#include <sstream>

using namespace Persistence;

namespace {

const std::string Magic = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n";

/// What is read, one a line: entries with their lines, problems with a mark.
std::string told(const std::string &text)
{
    std::istringstream stream(text);
    std::string all;
    try {
        const Settings settings = readSettings(stream);
        for (const Entry &entry : settings.entries)
            all += std::to_string(entry.line) + " " + entry.feature + "[" + displayText(entry.selection) + "]"
                + entry.value + "\n";
        for (const Problem &problem : settings.problems)
            all += (problem.severity == Severity::Note ? "? " : "! ") + problem.text + "\n";
    } catch (const GenICam::RuntimeException &error) {
        all = std::string("refused: ") + error.GetDescription();
    }
    return all;
}

} // namespace

class tst_PersistenceFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesOtherFiles()
    {
        const Row<const char *> rows[] = {
            {"", "refused: Line 1: this is no settings file: it is empty"},
            {"Width\t5\n",
             "refused: Line 1: this is no settings file: it begins with 'Width 5' instead of '# {05D8C294-"},
            {"# {00000000-F295-4dfb-9D01-096BD04049F4}\n",
             "refused: Line 1: this file is of another tool: it begins with '# "
             "{00000000-F295-4dfb-9D01-096BD04049F4}', a "},
            {"\x1f\x8b\b", "refused: Line 1: this is no settings file: it begins with '?\x8b?' instead of "}};
        for (const auto &[text, expected] : rows)
            COMPARE_ROW(text, told(text).substr(0, std::string(expected).size()), expected);
    }

    void readsEntries()
    {
        const Row<const char *> rows[] = {
            {"Width\t5", "2 Width[]5\n"},
            {"\n# note\nName\t\n\nText\ta\tb\n", "4 Name[]\n6 Text[]a\tb\n"},
            {"Gain\t{A=0\tB=X}\t1.5\n", "2 Gain[A=0, B=X]1.5\n"},
            {"Text\t{}\tx\nText2\t{a}\n", "2 Text[]{}\tx\n3 Text2[]{a}\n"},
            {"Text\tcaf\xE9\r\n", "2 Text[]caf\xE9\r\n"},
            {"Sel\tA\nSel\tA\n", "2 Sel[]A\n3 Sel[]A\n"},
            {"Wid", "! Line 2: the line is incomplete: 'Wid' has no value\n"},
            {"\t5\n", "! Line 2: the line is incomplete: there is no name in front of the value\n"},
            {"Gain\t{A=0\tB=\n", "! Line 2: the selectors of 'Gain' are incomplete: {A=0 B=\n"},
            {"Gain\t{A=0\tB}\t1\nX\t1\n", "3 X[]1\n! Line 2: the selectors of 'Gain' are incomplete: {A=0 B} 1\n"},
            {"X\t1\nX\t2\nX\t2\n",
             "2 X[]1\n3 X[]2\n4 X[]2\n? Line 3: 'X' stands in line 2 with another value; the last one stays\n"},
            {"X\t1\n# {05D8C294-F295-4dfb-9D01-096BD04049F4}\nX\t2\n",
             "2 X[]1\n! Line 3: another settings file begins here; it is left out\n"}};
        for (const auto &[text, expected] : rows)
            COMPARE_ROW(text, told(Magic + text), expected);
    }

    void readsFilesOfOtherSystems()
    {
        std::string text = "\xEF\xBB\xBF" + Magic + "Width\t5\nText\tx \r\r\n";
        text.insert(text.find('\n'), "\r");
        text.insert(text.find("\nText"), "\r");
        QCOMPARE(told(text), std::string("2 Width[]5\n3 Text[]x \r\n"));
    }

    void writesWhatItReads()
    {
        std::string text = Magic
            + "# GenApi persistence file (version 3.4.0)\n"
              "# dev = V::M -- Tool -- tip -- Device version = 1.2.3 -- Product GUID = 4 -- Product version GUID = 5\n"
              "# mine\n"
              "Gain\t{A=0\tB=X}\t1.5\nText\ta\tb\n";
        std::istringstream in(text);
        in.exceptions(std::ios_base::failbit | std::ios_base::badbit
                      | std::ios_base::eofbit); // its owner's, not the reader's
        const Settings settings = readSettings(in);
        std::ostringstream out;
        writeSettings(out, settings);
        QCOMPARE(out.str(), text);
        const DeviceInfo &device = settings.device;
        QCOMPARE(device.vendor + "|" + device.model + "|" + device.toolTip, std::string("V|M|Tool -- tip"));
        QCOMPARE(device.version + "|" + device.productGuid + "|" + device.versionGuid, std::string("1.2.3|4|5"));
    }

    void takesLongLines()
    {
        const std::string longText(10 << 20, 'x');
        QCOMPARE(told(Magic + longText),
                 "! Line 2: the line is incomplete: '" + longText.substr(0, 80) + "...' has no value\n");
        QCOMPARE(told(Magic + "X\t" + longText).size(), longText.size() + 6);
        QVERIFY(told(longText).size() < 300);
    }
};

QTEST_GUILESS_MAIN(tst_PersistenceFile)
#include "tst_PersistenceFile.moc"
