// SPDX-License-Identifier: MIT
#include <stdexcept>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "FaultyNode.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "FindRow.h"
#include "TestCamera.h"
#include "TestRows.h"
#include "support/FakeHostCore.h"

namespace {

const QStringList Headers{QStringLiteral("Feature"), QStringLiteral("Value")};

/// A filled model of a camera, under the model tester.
struct TestModel
{
    explicit TestModel(const GenApi::node_vector &nodes) : model(Headers, nodes)
    {
        model.AddModelData(nodes, QString());
    }
    explicit TestModel(const TestCamera &camera) : TestModel(camera.nodes()) { }

    TreeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

/// Names of all rows as "Root(A(B C) D)".
QString outline(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        rows.append(index.data().toString() + outline(model, index));
    }
    if (rows.isEmpty())
        return QString();
    const QString text = rows.join(QLatin1Char(' '));
    return parent.isValid() ? QLatin1Char('(') + text + QLatin1Char(')') : text;
}

/// `features` are separated by blanks.
std::string category(const std::string &name, const std::string &features, const std::string &rest = {})
{
    const QString listed =
        QString::fromStdString(features).replace(QLatin1Char(' '), QLatin1String("</pFeature><pFeature>"));
    return "<Category Name=\"" + name + "\">" + rest
        + (features.empty() ? "" : "<pFeature>" + listed.toStdString() + "</pFeature>") + "</Category>\n";
}

const char *const Hidden = "<Integer Name=\"Hidden\"><Visibility>Invisible</Visibility><Value>1</Value></Integer>\n";
const char *const SomeInteger = "<Integer Name=\"Some\"><Value>1</Value></Integer>\n";

const struct
{
    const char *name;
    std::string elements;
    const char *rows;
} Outlines[] = {
    {"tool tip of the root", category("Root", "Some", "<ToolTip>My camera</ToolTip>"), "My camera(Some)"},
    {"empty root", category("Root", ""), "test-camera"},
    {"two parents, two rows", category("Root", "A B Some") + category("A", "Some") + category("B", "Some"),
     "test-camera(A(Some) B(Some) Some)"},
    {"loop of categories", category("Root", "A") + category("A", "B Some") + category("B", "A Some"),
     "test-camera(A(B(Some) Some))"},
    {"category of itself", category("Root", "A") + category("A", "A Some"), "test-camera(A(Some))"},
    {"root in a loop", category("Root", "A") + category("A", "Root Some"), "test-camera(A(Some))"},
    {"not below the root",
     category("Root", "Some") + category("Orphans", "Other") + "<Integer Name=\"Other\"><Value>1</Value></Integer>",
     "test-camera(Some)"},
    {"nothing to show", category("Root", "Empty Hidden Some") + category("Empty", "") + Hidden, "test-camera(Some)"},
};

} // namespace

class tst_TreeModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeHostCore::instance().reset(); }

    void readsEachRegisterOnce()
    {
        TestCamera camera;
        camera.port.poke(TestCamera::Width, 48);
        camera.port.poke(TestCamera::Power, 1);
        const TestModel test(camera);
        for (const MemoryPort::Access &access : camera.port.accesses)
            QVERIFY2(camera.port.readsOf(access.address) == 1, camera.port.trace().c_str());
        QVERIFY(camera.port.reads > 10);
        QCOMPARE(camera.port.writes, 0u);
        for (const auto &[name, value] : {std::pair<const char *, QVariant>("Width", qint64(48)),
                                          {"Power", true},
                                          {"Selector", QStringLiteral("Zulu")},
                                          {"Start", {}},
                                          {"WriteOnly", {}}})
            QVERIFY2(test.model.getItem(findRow(test.model, name))->storedData(1) == value, name);
    }

    void outlines_data() { addRows(Outlines); }

    void outlines()
    {
        const auto &row = currentRow(Outlines);
        const TestCamera camera(TestCamera::description(row.elements + SomeInteger));
        const TestModel test(camera);
        QCOMPARE(outline(test.model), QLatin1String(row.rows));
    }

    /// 2^40 rows by the letter, and a chain that is deeper than any stack should go.
    void manyCategoriesStayBounded()
    {
        std::string doubling = category("Root", "C0 C0");
        for (int i = 0; i < 40; ++i)
            doubling += category("C" + std::to_string(i), "C" + std::to_string(i + 1) + " C" + std::to_string(i + 1));
        doubling += category("C40", "Some") + SomeInteger;
        std::string chain = category("Root", "C0");
        for (int i = 0; i < 3000; ++i)
            chain += category("C" + std::to_string(i), "Some C" + std::to_string(i + 1));
        chain += category("C3000", "Some") + SomeInteger;
        for (const std::string &elements : {doubling, chain}) {
            const TestCamera camera(TestCamera::description(elements));
            TreeModel model(Headers, {});
            QElapsedTimer timer;
            timer.start();
            model.AddModelData(camera.nodes(), QString());
            QVERIFY(model.rowCount(model.index(0, 0)) > 0);
            QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        }
    }

    void nodesThatFail()
    {
        const TestCamera camera;
        FaultyNode dead([] { throw RUNTIME_EXCEPTION("dead"); });
        FaultyNode foreign([] { throw std::runtime_error("foreign"); });
        foreign.hasShape = true;
        foreign.name = "Foreign";
        GenApi::node_vector nodes;
        for (GenApi::INode *node : {static_cast<GenApi::INode *>(nullptr), static_cast<GenApi::INode *>(&dead),
                                    static_cast<GenApi::INode *>(&foreign), camera.node("Root")})
            nodes.push_back(node);
        const TestModel test(nodes);
        QCOMPARE(test.model.rowCount(), 2);
        QVERIFY(findRow(test.model, "Foreign").isValid() && findRow(test.model, "test-camera").isValid());
        for (int repaint = 0; repaint < 3; ++repaint)
            QCOMPARE(test.model.index(0, 1).data(), QVariant());
        QCOMPARE(FakeHostCore::instance().calls().count(QStringLiteral("VLogInfo(TreeModel, foreign, 0)")), 1);
    }

    void answersRoles()
    {
        TestCamera camera;
        camera.port.poke(TestCamera::Width, 48);
        const TestModel test(camera);
        for (const auto role : {Qt::DisplayRole, Qt::EditRole}) {
            QCOMPARE(findRow(test.model, "Width").data(role), QVariant(QStringLiteral("Width")));
            QCOMPARE(findRow(test.model, "Width", 1).data(role), QVariant(qint64(48)));
            QCOMPARE(findRow(test.model, "Start", 1).data(role), QVariant(QStringLiteral("{Execute}")));
        }
        QCOMPARE(findRow(test.model, "Width").data(Qt::ToolTipRole), QVariant(QStringLiteral("Width")));
        QCOMPARE(findRow(test.model, "Width", 1).data(Qt::ToolTipRole), QVariant());
        QCOMPARE(findRow(test.model, "Width").data(Qt::DecorationRole), QVariant());
        // What cannot be written is left to the delegate.
        for (const char *readOnly : {"Temperature", "PowerState", "SelectorState", "WidthMax", "StartLocked", "Image"})
            QVERIFY2(findRow(test.model, readOnly).isValid() && !findRow(test.model, readOnly, 1).data().isValid(),
                     readOnly);
    }

    void translates()
    {
        QDir folder(QCoreApplication::applicationDirPath());
        QVERIFY(folder.mkpath(QStringLiteral("translate")));
        QFile file(folder.filePath(QStringLiteral("translate/feature.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Gain>X\nZulu>Z\nWidth>\nLabel>a>b\n");
        file.close();
        const TestCamera camera;
        TreeModel model(Headers, {}); // without the tester, which takes dataChanged with invalid indexes for a fault
        model.AddModelData(camera.nodes(), QString());
        QVERIFY(file.remove());
        QSignalSpy spy(&model, &TreeModel::dataChanged);
        const char *const texts[] = {"Gain,Width,Zulu,Label", "X,,Z,Label", "Gain,Width,Zulu,Label"};
        const QModelIndexList cells{findRow(model, "Gain"), findRow(model, "Width"), findRow(model, "Selector", 1),
                                    findRow(model, "Label")};
        for (int language = 0; language < 3; ++language) {
            model.setFeatureLanguage(language);
            QStringList shown;
            for (const QModelIndex &index : cells)
                shown.append(index.data().toString());
            QCOMPARE(shown.join(QLatin1Char(',')), QLatin1String(texts[language]));
        }
        QCOMPARE(spy.size(), 3);
        QVERIFY(!spy.at(0).at(0).toModelIndex().isValid());
    }

    void writesAndReports()
    {
        TestCamera camera;
        TestModel test(camera);
        QSignalSpy spy(&test.model, &TreeModel::dataChanged);
        const QModelIndex width = findRow(test.model, "Width", 1);
        QVERIFY(test.model.setData(width, 52.0, Qt::EditRole));
        QCOMPARE(camera.port.peek(TestCamera::Width), quint64(52));
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toModelIndex(), width);
        QVERIFY(!test.model.setData(width, 52.0, Qt::DecorationRole));
        QVERIFY(!test.model.setData(width, QVariant(), Qt::EditRole));
        QVERIFY(!test.model.setData(QModelIndex(), 1, Qt::EditRole));
        QCOMPARE(spy.size(), 1);
    }

    void headersAndFlags()
    {
        const TestCamera camera;
        TestModel test(camera);
        QCOMPARE(test.model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Feature"));
        QCOMPARE(test.model.headerData(0, Qt::Vertical), QVariant());
        qRegisterMetaType<Qt::Orientation>();
        QSignalSpy spy(&test.model, &TreeModel::headerDataChanged);
        QVERIFY(test.model.setHeaderData(1, Qt::Horizontal, QStringLiteral("V")));
        QVERIFY(!test.model.setHeaderData(1, Qt::Horizontal, QStringLiteral("V"), Qt::DisplayRole));
        QVERIFY(!test.model.setHeaderData(2, Qt::Horizontal, QStringLiteral("V")));
        QCOMPARE(spy.size(), 1);
        QCOMPARE(test.model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("V"));

        const Qt::ItemFlags base = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
        QCOMPARE(findRow(test.model, "Width").flags(), base | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled);
        QCOMPARE(findRow(test.model, "Image", 1).flags(), base | Qt::ItemIsEditable);
        QCOMPARE(test.model.flags(QModelIndex()), Qt::ItemFlags());
        QVERIFY(!test.model.index(0, 0, findRow(test.model, "Image", 1)).isValid());
    }

    void structureEdits()
    {
        const TestCamera camera;
        TestModel test(camera);
        TreeModel &model = test.model;
        const QModelIndex root = model.index(0, 0);
        const int before = model.rowCount(root);
        QVERIFY(model.insertRows(1, 2, root) && model.rowCount(root) == before + 2);
        QCOMPARE(model.getItem(model.index(1, 0, root))->columnCount(), 2);
        QVERIFY(!model.removeRows(before, 3, root) && !model.removeRows(-1, 1, root));
        QVERIFY(model.removeRows(1, 2, root) && model.rowCount(root) == before);
        QVERIFY(!model.insertRows(-1, 1, root) && !model.insertColumns(3, 1));
        QVERIFY(model.insertColumns(1, 1));
        QCOMPARE(model.columnCount(root), 3);
        QCOMPARE(model.getItem(findRow(model, "Width"))->columnCount(), 3);
        QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), QStringLiteral("Value"));
        QVERIFY(!model.removeColumns(2, 2));
        QVERIFY(model.removeColumns(0, 3) && model.rowCount() == 0);
    }
};

QTEST_GUILESS_MAIN(tst_TreeModel)
#include "tst_TreeModel.moc"
