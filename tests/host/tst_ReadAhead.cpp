// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Devices/LoadedNodeMap.h"
#include "support/MemoryPort.h"

namespace {

constexpr char Common[] = "<Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort>";

/// A register that is a feature, with more of its elements.
QByteArray reg(const char *name, const QByteArray &where, const QByteArray &more = {}, const QByteArray &gate = {})
{
    return QByteArray("<IntReg Name=\"") + name + "\">" + gate + where + Common + more
        + "<Endianess>LittleEndian</Endianess></IntReg>";
}

QByteArray at(int address)
{
    return "<Address>" + QByteArray::number(address) + "</Address>";
}

QByteArray onlyIf(const char *node)
{
    return QByteArray("<pIsAvailable>") + node + "</pIsAvailable>";
}

QByteArray description(const QByteArray &features, const QByteArray &nodes)
{
    QByteArray root;
    for (const QByteArray &name : features.split(' '))
        root += "<pFeature>" + name + "</pFeature>";
    return "<RegisterDescription><Category Name=\"Root\">" + root + "</Category>" + nodes
        + "<Port Name=\"Device\"/><Port Name=\"Chunks\"/></RegisterDescription>";
}

/// Asks for all that a panel asks of the features.
void look(GenApi::INodeMap &map, const QByteArray &features)
{
    for (const QByteArray &name : features.split(' ')) {
        const GenApi::CIntegerPtr feature(map.GetNode(name.constData()));
        if (GenApi::IsReadable(feature))
            feature->GetValue(), feature->GetMax();
    }
}

} // namespace

class tst_ReadAhead : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatAPanelWants()
    {
        const QByteArray limited = "<Integer Name=\"L\"><pValue>A</pValue><pMax>B</pMax></Integer>";
        const QByteArray shut = "<Integer Name=\"L\">" + onlyIf("A") + "<pValue>B</pValue></Integer>";
        const QByteArray indexed = at(0x40) + "<pIndex Offset=\"4\">A</pIndex>";
        const struct
        {
            const char *what;
            QByteArray features, nodes;
            const char *reads; ///< all that the device sees
            unsigned late = 0; ///< those of them that the panel has to make
        } rows[] = {
            {"adjacent ones together", "A B C", reg("A", at(0)) + reg("B", at(4)) + reg("C", at(8)), "R0x0:12"},
            {"never the gap", "A B", reg("A", at(0)) + reg("B", at(8)), "R0x0:4 R0x8:4"},
            {"one register of two nodes", "A B", reg("A", at(0)) + reg("B", at(0)), "R0x0:4"},
            {"limits", "L", limited + reg("A", at(0)) + reg("B", at(4)), "R0x0:8"},
            {"the place that another one tells", "A B", reg("A", at(0)) + reg("B", indexed), "R0x0:4 R0x48:4"},
            {"a gate first", "B", reg("A", at(0)) + reg("B", at(4), {}, onlyIf("A")), "R0x0:4 R0x4:4"},
            {"nothing behind a closed gate", "B C",
             reg("A", at(0x80)) + reg("B", at(4), {}, onlyIf("A")) + reg("C", at(0x84)), "R0x80:8"},
            {"no inner gate either", "L",
             shut + reg("A", at(0x80)) + reg("B", at(4), {}, onlyIf("D")) + reg("D", at(8)), "R0x80:4"},
            {"a lock together with what it locks", "B",
             reg("A", at(0)) + reg("B", at(4), {}, "<pIsLocked>A</pIsLocked>").replace("RO", "RW"), "R0x0:8"},
            {"another port", "A B", reg("A", at(0)) + reg("B", at(4)).replace("Device", "Chunks"), "R0x0:4"},
            {"invisible ones", "A B", reg("A", at(0)) + reg("B", at(4), {}, "<Visibility>Invisible</Visibility>"),
             "R0x0:4 R0x4:4", 1},
            {"what is not cachable, each time", "A B",
             reg("A", at(0)) + reg("B", at(4), "<Cachable>NoCache</Cachable>"), "R0x0:4 R0x4:4", 1},
        };
        for (const auto &row : rows) {
            MemoryPort memory;
            memory.poke(0, 2);
            LoadedNodeMap map(description(row.features, row.nodes), memory);
            map.readAhead(m_cancelled, {});
            const unsigned ahead = memory.reads;
            look(*map.get(), row.features);
            QVERIFY2(memory.trace() == row.reads, QByteArray(row.what) + ": " + memory.trace().c_str());
            QVERIFY2(memory.reads - ahead == row.late, row.what);
        }
    }

    void longRunsAreCut()
    {
        QByteArray names, nodes;
        for (int i = 0; i < 200; ++i) {
            names += "R" + QByteArray::number(i) + ' ';
            nodes += reg("R" + QByteArray::number(i), at(4 * i));
        }
        MemoryPort memory;
        LoadedNodeMap map(description(names.trimmed(), nodes), memory);
        int told = 0, all = 0;
        map.readAhead(m_cancelled, [&](int done, int of) { told = done, all = of; });
        QCOMPARE(memory.trace(), std::string("R0x0:512 R0x200:288"));
        QCOMPARE(told, 200);
        QCOMPARE(all, 200);
    }

    /// Refused blocks are read one by one; a silent device and an impatient user end it. Nothing of it is thrown.
    void failuresAndTheirPrice()
    {
        const QByteArray nodes = reg("A", at(0)) + reg("B", at(4)) + reg("C", at(0x10)) + reg("D", at(0x20));
        const struct
        {
            MemoryPort::Fault fault;
            bool cancelled;
            const char *reads;
        } rows[] = {{MemoryPort::Fault::Refused, false, "R0x0:8 R0x0:4 R0x4:4 R0x10:4 R0x20:4"},
                    {MemoryPort::Fault::Foreign, false, "R0x0:8 R0x0:4 R0x4:4 R0x10:4 R0x20:4"},
                    {MemoryPort::Fault::Timeout, false, "R0x0:8"},
                    {MemoryPort::Fault::None, true, "R0x0:8"}};
        for (const auto &row : rows) {
            MemoryPort memory;
            memory.readFault = row.fault;
            memory.faultTo = 4;
            LoadedNodeMap map(description("A B C D", nodes), memory);
            std::atomic_bool cancelled{false};
            map.readAhead(cancelled, [&](int, int) { cancelled = row.cancelled; });
            QCOMPARE(memory.trace(), std::string(row.reads));
            QCOMPARE(map.load().timeouts, uint64_t(row.fault == MemoryPort::Fault::Timeout));
            QCOMPARE(map.load().accesses, uint64_t(memory.reads));
        }
    }

    void blocksAreGoneAfterwards()
    {
        const QByteArray nodes = reg("A", at(0)) + reg("B", at(4));
        MemoryPort memory;
        LoadedNodeMap map(description("A B", nodes), memory);
        map.readAhead(m_cancelled, {});
        memory.poke(4, 7);
        map.get()->InvalidateNodes();
        QCOMPARE(GenApi::CIntegerPtr(map.get()->GetNode("B"))->GetValue(), int64_t(7));
    }

private:
    const std::atomic_bool m_cancelled{false};
};

QTEST_GUILESS_MAIN(tst_ReadAhead)
#include "tst_ReadAhead.moc"
