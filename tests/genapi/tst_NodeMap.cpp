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
    void listsNodesByFirstMention()
    {
        const Camera camera("<Integer Name=\"B\"><Value>1</Value><pMax>D</pMax></Integer>"
                            "<Group><Integer Name=\"A\"><Value>2</Value></Integer></Group>"
                            "<Integer Name=\"D\"><Value>4</Value></Integer>"
                            "<Enumeration Name=\"E\"><EnumEntry Name=\"X\"><Value>0</Value></EnumEntry><Value>0</Value>"
                            "</Enumeration><Category Name=\"Root\"><pFeature>A</pFeature></Category>");
        NodeList_t nodes;
        camera.map->GetNodes(nodes);
        QCOMPARE(namesOf(nodes), QByteArray("B D A E EnumEntry_E_X Root Device"));
        QCOMPARE(camera.port.reads, 0u);
    }

    void findsNodesByName()
    {
        const Camera camera("<Integer Name=\"Width\" NameSpace=\"Standard\"><Value>1</Value></Integer>");
        QVERIFY(camera.node("Width"));
        QCOMPARE(camera.node("Std::Width"), camera.node("Width"));
        QVERIFY(!camera.node("Cust::Width"));
        QVERIFY(!camera.node("width"));
        QVERIFY(!camera.node(""));
        QCOMPARE(camera.node("Width")->GetNodeMap(), camera.map);
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
        const Camera camera("<Category Name=\"Root\"><pFeature>Sub</pFeature></Category>"
                            "<Category Name=\"Sub\"><pFeature>Inside</pFeature></Category>"
                            "<Category Name=\"Orphan\"><pFeature>Outside</pFeature></Category>"
                            + integer("Inside", "0") + integer("Outside", "4"));
        for (const char *name : {"Root", "Sub", "Inside"})
            QVERIFY2(camera.node(name)->IsFeature(), name);
        for (const char *name : {"InsideReg", "Orphan", "Outside", "Device"})
            QVERIFY2(!camera.node(name)->IsFeature(), name);
    }

    void categoriesTakeTheirVisibilityFromTheirFeatures()
    {
        const Camera camera(
            "<Category Name=\"Root\"><pFeature>Gurus</pFeature><pFeature>Empty</pFeature></Category>"
            "<Category Name=\"Gurus\"><Visibility>Beginner</Visibility><pFeature>G</pFeature></Category>"
            "<Category Name=\"Hidden\"><Visibility>Invisible</Visibility><pFeature>B</pFeature></Category>"
            "<Category Name=\"Empty\"/>"
            "<Integer Name=\"G\"><Visibility>Guru</Visibility><Value>1</Value></Integer>"
            "<Integer Name=\"B\"><Value>1</Value></Integer>");
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
        CSelectorPtr selector(camera.node("W"));
        FeatureList_t selected;
        selector->GetSelectedFeatures(selected);
        QCOMPARE(selected.size(), size_t(1));
        QCOMPARE(QByteArray(selected[0]->GetNode()->GetName()), QByteArray("S"));
    }

    void selectorsSelectWhatTheirSelectorsDo()
    {
        const auto selector = [](const char *name, const QByteArray &selected) {
            std::string xml = std::string("<Integer Name=\"") + name + "\"><Value>0</Value>";
            for (const char feature : selected)
                xml += std::string("<pSelected>") + feature + "</pSelected>";
            return xml + "</Integer>";
        };
        const Camera camera(selector("A", "BDA") + selector("B", "CDA") + selector("C", "") + selector("D", "E")
                            + selector("E", ""));
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
                            "<Integer Name=\"B\"><Value>1</Value></Integer>");
        const auto property = [&](const char *name) {
            gcstring value("old"), attribute("old");
            const bool isFound = camera.node("A")->GetProperty(name, value, attribute);
            return QByteArray(isFound ? "" : "none:") + value.c_str() + attribute.c_str();
        };
        QCOMPARE(property("NodeType"), QByteArray("Integer"));
        QCOMPARE(property("NameSpace"), QByteArray("Standard"));
        QCOMPARE(property("Visibility"), QByteArray("Beginner"));
        QCOMPARE(property("Streamable"), QByteArray("Yes"));
        QCOMPARE(property("pIsAvailable"), QByteArray("B"));
        QCOMPARE(property("Value"), QByteArray("3"));
        QCOMPARE(property("Interface"), QByteArray("none:"));
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
        const std::string text = "<String Name=\"Text\"><Value>x</Value></String>";
        const std::string rows[] = {
            "<Integer Name=\"Bad\"><pValue>No</pValue></Integer>",
            "<Integer Name=\"Bad\"><pIsAvailable>No</pIsAvailable><Value>1</Value></Integer>",
            "<Integer Name=\"Bad\"><Value>1</Value><pMax>No</pMax></Integer>",
            "<IntReg Name=\"Bad\"><Address>0</Address><Length>4</Length></IntReg>",
            "<IntReg Name=\"Bad\"><Address>0</Address><Length>4</Length><pPort>Good</pPort></IntReg>",
            "<Integer Name=\"Bad\"><pValue>Text</pValue></Integer>" + text,
            "<Integer Name=\"Bad\"><pIsLocked>Text</pIsLocked><Value>1</Value></Integer>" + text,
            "<IntSwissKnife Name=\"Bad\"><Formula>1 + (</Formula></IntSwissKnife>",
            "<IntSwissKnife Name=\"Bad\"><Formula>UNKNOWN * 2</Formula></IntSwissKnife>",
            "<IntSwissKnife Name=\"Bad\"><Expression Name=\"P\">Q</Expression>"
            "<Expression Name=\"Q\">P</Expression><Formula>P</Formula></IntSwissKnife>",
            "<Converter Name=\"Bad\"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom></Converter>",
            // an unknown element, no name, a name twice
            "<Gadget Name=\"x\"/><Integer/><Integer Name=\"Good\"><Value>9</Value></Integer>"
            "<Integer Name=\"Bad\"><pValue>No</pValue></Integer>"};
        for (const std::string &nodes : rows) {
            const Camera camera("<Integer Name=\"Good\"><Value>7</Value></Integer>" + nodes);
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
            {"<Integer Name=\"A\"><pValue>A</pValue></Integer>", NA, "A -> A"},
            {"<Integer Name=\"A\"><pValue>B</pValue></Integer><Float Name=\"B\"><pValue>A</pValue></Float>", NA,
             "A -> B -> A"},
            {"<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">A</pVariable><Formula>X+1</Formula></IntSwissKnife>", NA,
             "A -> A"},
            {"<Integer Name=\"A\"><pValue>B</pValue></Integer><Integer Name=\"B\"><pValue>B</pValue></Integer>", NA,
             "B -> B"},
            {"<Integer Name=\"A\"><Value>5</Value><pMax>B</pMax></Integer>"
             "<Integer Name=\"B\"><Value>7</Value><pMin>A</pMin></Integer>",
             RW, "A -> B -> A"},
            {"<Integer Name=\"A\"><Value>5</Value><pMax>B</pMax></Integer>"
             "<IntSwissKnife Name=\"B\"><pVariable "
             "Name=\"X.Max\">A</pVariable><Formula>X.Max</Formula></IntSwissKnife>",
             RW, "A -> B -> A"},
            {"<Integer Name=\"A\"><pIsAvailable>B</pIsAvailable><Value>1</Value></Integer>"
             "<Integer Name=\"B\"><pIsAvailable>A</pIsAvailable><Value>1</Value></Integer>",
             RW, "A -> B -> A"},
            {"<Category Name=\"Root\"><pFeature>A</pFeature></Category>"
             "<Category Name=\"A\"><pFeature>Root</pFeature><pFeature>X</pFeature></Category>"
             "<Integer Name=\"X\"><Value>1</Value></Integer>",
             RO, ""},
            {"<Integer Name=\"A\"><Value>1</Value><pSelected>A</pSelected></Integer>", RW, ""}};
        for (const auto &[nodes, access, ring] : rows) {
            const LayerLog log;
            const Camera camera(nodes + integer("Good", "0"));
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
            nodes += "<Integer Name=\"N" + std::to_string(i) + "\"><pValue>N" + below + "</pValue><pMax>N" + below
                + "</pMax></Integer>";
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
            nodes += "<IntSwissKnife Name=\"N" + std::to_string(i) + "\"><pIsAvailable>" + below
                + "</pIsAvailable>"
                  "<pVariable Name=\"A\">"
                + below + "</pVariable><pVariable Name=\"B\">" + below
                + "</pVariable><Formula>A+B</Formula></IntSwissKnife>";
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
            nodes += "<Integer Name=\"" + name(i) + "\"><pValue>" + name(i - 1) + "</pValue><pSelected>"
                + name(i * 7 % Length) + "</pSelected></Integer>";
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
