// SPDX-License-Identifier: MIT
// The map as a whole: names, order, features, the graph, and descriptions that are wrong.
#include "Camera.h"
#include "TableRows.h"
#include "support/LayerLog.h"

#include <QTest>

#include <ctime>

using namespace GenApi;

namespace {

QByteArray namesOf(const NodeList_t &nodes)
{
    QByteArray names;
    for (INode *node : nodes)
        names += (names.isEmpty() ? "" : " ") + QByteArray(node->GetName().c_str());
    return names;
}

} // namespace

class tst_NodeMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsAndFindsNodes()
    {
        const Camera camera("<Integer Name=\"B\"><Value>1</Value><pMax>D</pMax></Integer>"
                            "<Group><Integer Name=\"A\" NameSpace=\"Standard\"><Value>2</Value></Integer></Group>"
                            "<Integer Name=\"D\"><Value>4</Value></Integer>"
                            "<Enumeration Name=\"E\"><EnumEntry Name=\"X\"><Value>0</Value></EnumEntry><Value>0</Value>"
                            "</Enumeration><Category Name=\"Root\"><pFeature>A</pFeature></Category>");
        NodeList_t nodes;
        camera.map->GetNodes(nodes);
        QCOMPARE(namesOf(nodes), QByteArray("B D A E EnumEntry_E_X Root Device"));
        QCOMPARE(camera.port.reads, 0u);
        QVERIFY(camera.node("A"));
        QCOMPARE(camera.node("Std::A"), camera.node("A"));
        for (const char *name : {"Cust::A", "a", ""})
            QVERIFY2(!camera.node(name), name);
        QCOMPARE(camera.node("A")->GetNodeMap(), camera.map);
    }

    void entriesWhoseWholeNamesMeetStayApart()
    {
        const Camera camera(
            "<Enumeration Name=\"A\"><EnumEntry Name=\"B_C\"><Value>1</Value></EnumEntry><Value>1</Value>"
            "</Enumeration><Enumeration Name=\"A_B\"><EnumEntry Name=\"C\"><Value>2</Value></EnumEntry>"
            "<Value>2</Value></Enumeration>");
        QCOMPARE(CEnumerationPtr(camera.node("A"))->ToString(), gcstring("B_C"));
        QCOMPARE(CEnumerationPtr(camera.node("A_B"))->ToString(), gcstring("C"));
    }

    void featuresAreReachableFromRoot()
    {
        const Camera camera(integer("Inside", "0") + integer("Outside", "4") + described(R"(
            Category Root; pFeature=Sub
            Category Sub; pFeature=Inside
            Category Orphan; pFeature=Outside)"));
        for (const char *name : {"Root", "Sub", "Inside"})
            QVERIFY2(camera.node(name)->IsFeature(), name);
        for (const char *name : {"InsideReg", "Orphan", "Outside", "Device"})
            QVERIFY2(!camera.node(name)->IsFeature(), name);
    }

    void categoriesTakeTheirVisibilityFromTheirFeatures()
    {
        const Camera camera(described(R"(
            Category Root; pFeature=Gurus; pFeature=Empty
            Category Gurus; Visibility=Beginner; pFeature=G
            Category Hidden; Visibility=Invisible; pFeature=B
            Category Empty
            Integer G; Visibility=Guru; Value=1
            Integer B; Value=1)"));
        QCOMPARE(camera.node("Gurus")->GetVisibility(), Guru);
        QCOMPARE(camera.node("Root")->GetVisibility(), Guru);
        QCOMPARE(camera.node("Hidden")->GetVisibility(), Beginner);
        QCOMPARE(camera.node("Empty")->GetVisibility(), Invisible);
        QCOMPARE(camera.access("Empty"), NI);
        QCOMPARE(camera.access("Gurus"), RO);
    }

    void linksGiveParentsAndChildren()
    {
        const Camera camera("<Category Name=\"Root\"><pFeature>W</pFeature></Category>"
                            + integer("W", "0", "<pMax>M</pMax><pSelected>S</pSelected><pIsLocked>L</pIsLocked>")
                            + integer("M", "4") + integer("S", "8", "", "<pInvalidator>M</pInvalidator>")
                            + integer("L", "12"));
        NodeList_t list;
        camera.node("W")->GetChildren(list);
        QCOMPARE(namesOf(list), QByteArray("WReg M L"));
        camera.node("M")->GetParents(list);
        QCOMPARE(namesOf(list), QByteArray("W"));
        camera.node("W")->GetChildren(list, ctTerminalNodes);
        QCOMPARE(namesOf(list), QByteArray("WReg"));
    }

    void selectorsSelectWhatTheirSelectorsDo()
    {
        const Camera camera(described(R"(
            Integer A; Value=0; pSelected=B; pSelected=D; pSelected=A
            Integer B; Value=0; pSelected=C; pSelected=D; pSelected=A
            Integer C; Value=0
            Integer D; Value=0; pSelected=E
            Integer E; Value=0)"));
        FeatureList_t selected;
        CSelectorPtr(camera.node("A"))->GetSelectedFeatures(selected);
        QByteArray names;
        for (IValue *feature : selected)
            names += feature->GetNode()->GetName().c_str();
        QCOMPARE(names, QByteArray("BDCE"));
    }

    void propertiesTellWhatTheDescriptionSays()
    {
        const Camera camera("<Integer Name=\"A\" NameSpace=\"Standard\"><Streamable>Yes</Streamable>"
                            "<pIsAvailable>B</pIsAvailable><Value>3</Value></Integer>"
                            + described("Integer B; Value=1"));
        for (const auto &[name, expected] : {std::pair("NodeType", "Integer"),
                                             {"NameSpace", "Standard"},
                                             {"Visibility", "Beginner"},
                                             {"Streamable", "Yes"},
                                             {"pIsAvailable", "B"},
                                             {"Value", "3"},
                                             {"Interface", nullptr}}) {
            gcstring value("old"), attribute("old");
            COMPARE_ROW(name, camera.node("A")->GetProperty(name, value, attribute), expected != nullptr);
            COMPARE_ROW(name, value + attribute, gcstring(expected));
        }
    }

    void wrongDescriptionsAreRefusedWithAText()
    {
        for (const std::string text : {"", "this is no camera description", "<html><body/></html>",
                                       "<RegisterDescription><Integer Name=\"A\"><Value>1", // cut off
                                       "<RegisterDescription><Group></RegisterDescription></Group>"}) {
            CNodeMapFactory factory(ContentType_Xml, text.data(), text.size());
            const std::string thrown = thrownBy([&] { factory.CreateNodeMap(); });
            QVERIFY2(thrown.rfind("Runtime: ", 0) == 0 && thrown.size() > 15, thrown.c_str());
        }
    }

    void wrongNodesCostThemselvesOnly()
    {
        const std::string rows[] = {
            "Integer Bad; pValue=No", "Integer Bad; pIsAvailable=No; Value=1", "Integer Bad; Value=1; pMax=No",
            "IntReg Bad; Address=0; Length=4", "IntReg Bad; Address=0; Length=4; pPort=Good",
            "Integer Bad; pValue=Text\nString Text; Value=x",
            "Integer Bad; pIsLocked=Text; Value=1\nString Text; Value=x", "IntSwissKnife Bad; Formula=1 + (",
            "IntSwissKnife Bad; Formula=UNKNOWN * 2", "IntSwissKnife Bad; Expression.P=Q; Expression.Q=P; Formula=P",
            "Converter Bad; FormulaTo=FROM; FormulaFrom=TO",
            // an unknown element, no name, a name twice
            "Gadget x\nInteger ;Value=1\nInteger Good; Value=9\nInteger Bad; pValue=No"};
        for (const std::string &nodes : rows) {
            const Camera camera(described("Integer Good; Value=7\n" + nodes));
            COMPARE_ROW(nodes, camera.access("Bad"), NA);
            COMPARE_ROW(nodes, thrownBy([&] { camera.value("Bad")->ToString(); }).substr(0, 8), "Access: ");
            COMPARE_ROW(nodes, thrownBy([&] { camera.value("Bad")->FromString("1"); }).empty(), false);
            COMPARE_ROW(nodes, camera.integer("Good")->GetValue(), 7);
        }
    }

    void endlessLinksNeverRecurse()
    {
        const struct
        {
            std::string nodes;
            EAccessMode access;
            std::string ring;
        } rows[] = {
            {"Integer A; pValue=A", NA, "A -> A"},
            {"Integer A; pValue=B\nFloat B; pValue=A", NA, "A -> B -> A"},
            {"IntSwissKnife A; pVariable.X=A; Formula=X+1", NA, "A -> A"},
            {"Integer A; pValue=B\nInteger B; pValue=B", NA, "B -> B"},
            {"Integer A; Value=5; pMax=B\nInteger B; Value=7; pMin=A", RW, "A -> B -> A"},
            {"Integer A; Value=5; pMax=B\nIntSwissKnife B; pVariable.X.Max=A; Formula=X.Max", RW, "A -> B -> A"},
            {"Integer A; pIsAvailable=B; Value=1\nInteger B; pIsAvailable=A; Value=1", RW, "A -> B -> A"},
            {"Category Root; pFeature=A\nCategory A; pFeature=Root; pFeature=X\nInteger X; Value=1", RO, ""},
            {"Integer A; Value=1; pSelected=A", RW, ""}};
        for (const auto &[nodes, access, ring] : rows) {
            const LayerLog log;
            const Camera camera(described(nodes) + integer("Good", "0"));
            const std::string line = ring.empty() ? "" : "GenApi: camera: nodes read each other: " + ring + "\n";
            COMPARE_ROW(nodes, log.text().substr(0, line.size()), line);
            COMPARE_ROW(nodes, log.text().empty(), ring.empty());
            COMPARE_ROW(nodes, camera.access("A"), access);
            CIntegerPtr a = camera.integer("A");
            if (access == RW) {
                a->SetValue(1);
                COMPARE_ROW(nodes, a->GetValue(true), 1);
                QVERIFY2(a->GetMax() >= 1, nodes.c_str());
            }
            camera.node("A")->GetVisibility();
            camera.node("A")->IsAccessModeCacheable();
            camera.node("A")->InvalidateNode();
            NodeList_t list;
            camera.node("A")->GetChildren(list, ctTerminalNodes);
            camera.integer("Good")->SetValue(3);
            COMPARE_ROW(nodes, camera.integer("Good")->GetValue(), 3);
        }
    }

    void longChainsEndInAnError()
    {
        std::string nodes = integer("N0", "0");
        constexpr int Length = 20000;
        for (int i = 1; i < Length; ++i) {
            const std::string below = std::to_string(i - 1);
            nodes += described("Integer N" + std::to_string(i) + "; pValue=N" + below + "; pMax=N" + below);
        }
        const Camera camera(nodes);
        const std::string last = "N" + std::to_string(Length - 1);
        QVERIFY(!thrownBy([&] { camera.integer(last.c_str())->GetValue(); }).empty());
        thrownBy([&] { camera.integer(last.c_str())->GetMax(); });
        camera.node(last.c_str())->GetCachingMode();
        QCOMPARE(camera.integer("N30")->GetValue(), int64_t(0));
        camera.integer("N0")->SetValue(4);
        QCOMPARE(camera.integer("N30")->GetValue(), int64_t(4));
    }

    // Every node reads the one below three times over, and nothing of it can be cached.
    void wideChainsEndToo()
    {
        std::string nodes = integer("N0", "0", "", "<Cachable>NoCache</Cachable>");
        for (int i = 1; i < 60; ++i) {
            const std::string below = "N" + std::to_string(i - 1);
            nodes += described("IntSwissKnife N" + std::to_string(i) + "; pIsAvailable=" + below
                               + "; pVariable.A=" + below + "; pVariable.B=" + below + "; Formula=A+B");
        }
        Camera camera(nodes);
        camera.port.poke(0, 1);
        const std::clock_t start = std::clock(); // not the time of the day: other tests may keep the machine busy
        thrownBy([&] { camera.access("N59"); });
        thrownBy([&] { camera.value("N59")->ToString(); });
        QCOMPARE(camera.integer("N3")->GetValue(), int64_t(8));
        QVERIFY(std::clock() - start < 20 * CLOCKS_PER_SEC);
    }

    void selectorsInLongChainsEnd()
    {
        // Each node reads all before it and selects another one.
        constexpr int Length = 10000;
        const auto name = [](int i) { return "C" + std::to_string(i); };
        std::string nodes = "<Integer Name=\"C0\"><Value>1</Value></Integer>";
        for (int i = 1; i < Length; ++i)
            nodes +=
                described("Integer " + name(i) + "; pValue=" + name(i - 1) + "; pSelected=" + name(i * 7 % Length));
        const Camera camera(nodes);
        const std::clock_t start = std::clock();
        QCOMPARE(camera.integer("C9")->GetValue(), int64_t(1));
        camera.integer("C0")->SetValue(2);
        QCOMPARE(camera.integer("C9")->GetValue(), int64_t(2));
        QVERIFY(std::clock() - start < 5 * CLOCKS_PER_SEC);
    }
};

QTEST_GUILESS_MAIN(tst_NodeMap)
#include "tst_NodeMap.moc"
