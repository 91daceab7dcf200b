// SPDX-License-Identifier: MIT
// Descriptions that somebody broke at random: nothing crashes, hangs, or throws what is no exception of the interface.
#include "Camera.h"

#include <QElapsedTimer>
#include <QTest>

#include <random>
#include <vector>

using namespace GenApi;

namespace {

std::string original()
{
    std::string nodes =
        "<Enumeration Name=\"Mode\"><EnumEntry Name=\"X\"><pIsAvailable>N1</pIsAvailable><Value>0</Value></EnumEntry>"
        "<EnumEntry Name=\"Y\"><Value>1</Value></EnumEntry><pValue>R3</pValue><pSelected>N2</pSelected></Enumeration>"
        + described(R"(
            Category Root; pFeature=Sub; pFeature=N0
            Category Sub; pFeature=Mode; pFeature=Run; pFeature=Text
            Command Run; pValue=R4; pCommandValue=N3
            String Text; pValue=TextReg
            StringReg TextReg; Address=0x80; pIndex.8=Mode; Length=8; AccessMode=RW; pPort=Device
            Boolean Flag; pIsLocked=N4; pValue=R5
            Float F; pValue=C; pMax=K
            Converter C; pVariable.V=N5; FormulaTo=FROM * V; FormulaFrom=TO / V; pValue=R6
            SwissKnife K; pVariable.A=N6; pVariable.B.Max=N7; Formula=(A > 3) ? B.Max : A * 2)");
    for (int i = 0; i < 8; ++i) {
        const std::string n = std::to_string(i), next = std::to_string((i + 1) % 8);
        nodes += described("Integer N" + n + "; pInvalidator=Run; pValue=R" + n + "; pMax=R" + next)
            + intReg(("R" + n).c_str(), std::to_string(16 * i).c_str(), "", 1 + i);
    }
    return nodes;
}

class Mutator
{
public:
    explicit Mutator(unsigned seed) : m_random(seed) { }

    std::string mutated(std::string text)
    {
        for (std::size_t n = 1 + pick(6); n > 0; --n) {
            switch (pick(12)) {
            case 0:
                text[pick(text.size())] = static_cast<char>(m_random());
                break;
            case 1:
                text.erase(pick(text.size()), pick(60));
                break;
            case 2:
                text.insert(pick(text.size()), text.substr(pick(text.size()), pick(300)));
                break;
            default:
                relink(text);
            }
        }
        return text;
    }

private:
    std::size_t pick(std::size_t count) { return count ? m_random() % count : 0; }

    // Lets one link lead to another node.
    void relink(std::string &text)
    {
        const std::size_t link = text.find("<p", pick(text.size()));
        const std::size_t begin = link == std::string::npos ? link : text.find('>', link);
        const std::size_t end = begin == std::string::npos ? begin : text.find('<', begin);
        const std::size_t name = text.find("Name=\"", pick(text.size()));
        if (end == std::string::npos || name == std::string::npos)
            return;
        const std::string target = text.substr(name + 6, text.find('"', name + 6) - name - 6);
        text.replace(begin + 1, end - begin - 1, target);
    }

    std::mt19937 m_random;
};

// Uses everything of every node; what it throws must be an exception of the interface or the port's.
void exercise(Camera &camera)
{
    NodeList_t nodes;
    camera.map->GetNodes(nodes);
    for (INode *node : nodes) {
        NodeList_t list;
        thrownBy([&] { node->GetAccessMode(); });
        for (const ELinkType type :
             {ctParentNodes, ctReadingChildren, ctWritingChildren, ctDependingNodes, ctTerminalNodes})
            node->GetChildren(list, type);
        node->GetVisibility();
        node->GetCachingMode();
        gcstring_vector names;
        node->GetPropertyNames(names);
        CValuePtr value(node);
        if (value.IsValid()) {
            thrownBy([&] { value->ToString(true, true); });
            thrownBy([&] { value->FromString("1"); });
            thrownBy([&] { value->FromString("2", false); });
        }
        const auto readLimits = [](auto number) {
            if (!number.IsValid())
                return;
            thrownBy([&] { number->GetMin(); });
            thrownBy([&] { number->GetMax(); });
        };
        readLimits(CIntegerPtr(node));
        readLimits(CFloatPtr(node));
        thrownBy([&] { node->InvalidateNode(); });
    }
    thrownBy([&] { camera.map->Poll(1000); });
    thrownBy([&] { camera.map->InvalidateNodes(); });
}

} // namespace

class tst_DescriptionFuzz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void survivesBrokenDescriptions()
    {
        const std::string text = original();
        Mutator mutator(20261122);
        int loaded = 0;
        for (int i = 0; i < 400; ++i) {
            const std::string broken = mutator.mutated(text);
            QElapsedTimer timer;
            timer.start();
            const std::string thrown = thrownBy([&] {
                Camera camera(broken);
                ++loaded;
                camera.port.readFault = i % 5 ? MemoryPort::Fault::None : MemoryPort::Fault::Timeout;
                exercise(camera);
            });
            QVERIFY2(thrown.empty() || thrown.rfind("Runtime: ", 0) == 0, thrown.c_str());
            QVERIFY2(timer.elapsed() < 5000, broken.c_str());
        }
        QVERIFY(loaded > 100);
        QVERIFY(loaded < 400);
    }
};

QTEST_GUILESS_MAIN(tst_DescriptionFuzz)
#include "tst_DescriptionFuzz.moc"
