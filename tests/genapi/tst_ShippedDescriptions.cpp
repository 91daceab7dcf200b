// SPDX-License-Identifier: MIT
// The descriptions of this project are ones that stricter implementations load, too.
#include "benchmarks/DescriptionMaker.h"
#include "support/LayerLog.h"
#include "support/MemoryPort.h"

#include <GenApi/GenApi.h>
#include <GenApi/NodeMapFactory.h>

#include <QDir>
#include <QXmlStreamReader>
#include <QtTest>

using namespace GenApi;

namespace {

/// The elements of some kinds of nodes, as far as our descriptions use them, in the order of the standard.
struct Order
{
    QStringList kinds;
    QStringList elements;
};

const QVector<Order> &orders()
{
    const auto words = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    const char *const head =
        "ToolTip Description DisplayName Visibility IsDeprecated pIsImplemented pIsAvailable pIsLocked "
        "ImposedAccessMode ";
    static const QVector<Order> All{
        {words("Category Integer Float Boolean Enumeration EnumEntry Command String"),
         words(head)
             + words("pInvalidator Streamable pFeature EnumEntry Value pValue IsSelfClearing CommandValue OnValue "
                     "OffValue Min pMin Max "
                     "pMax Inc pInc Unit Representation DisplayNotation DisplayPrecision PollingTime pSelected")},
        {words("IntReg MaskedIntReg FloatReg StringReg Register StructReg StructEntry"),
         words(head)
             + words("Streamable Address IntSwissKnife pIndex pAddress Length pLength AccessMode pPort Cachable "
                     "PollingTime pInvalidator LSB MSB Bit Sign Endianess Unit Representation StructEntry")},
        {words("SwissKnife IntSwissKnife Converter IntConverter"),
         words(head)
             + words("pVariable Constant Expression FormulaTo FormulaFrom pValue Formula Unit Representation "
                     "DisplayNotation DisplayPrecision Slope IsLinear")}};
    return All;
}

/// Elements that stand where they must not.
QStringList misplacedElements(const QByteArray &xml)
{
    struct Parent
    {
        const Order *order;
        QString name;
        int last; ///< place of the child before
    };
    QStringList misplaced;
    QVector<Parent> parents;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement)
            parents.removeLast();
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QString kind = reader.name().toString();
        if (!parents.isEmpty() && parents.last().order) {
            const int place = parents.last().order->elements.indexOf(kind);
            if (place < parents.last().last)
                misplaced += parents.last().name + QLatin1Char('.') + kind;
            parents.last().last = place;
        }
        const auto order = std::find_if(orders().begin(), orders().end(),
                                        [&](const Order &candidate) { return candidate.kinds.contains(kind); });
        const QString name = reader.attributes().value(QLatin1String("Name")).toString();
        parents.append({order == orders().end() ? nullptr : &*order, name, 0});
    }
    return misplaced;
}

} // namespace

class tst_ShippedDescriptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areStrict_data()
    {
        QTest::addColumn<QByteArray>("xml");
        const QDir folder(QStringLiteral(DESCRIPTIONS));
        for (const QString &name : folder.entryList({QStringLiteral("*.xml")})) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QTest::newRow(qPrintable(name)) << file.readAll();
        }
        QTest::newRow("made for the benchmarks") << QByteArray::fromStdString(makeDescription(200).xml);
    }

    void areStrict()
    {
        QFETCH(QByteArray, xml);
        QCOMPARE(misplacedElements(xml).join(QLatin1Char(' ')), QString());
        const LayerLog log;
        MemoryPort port;
        CNodeMapFactory factory(ContentType_Xml, xml.constData(), static_cast<std::size_t>(xml.size()));
        const std::unique_ptr<INodeMap, void (*)(INodeMap *)> map(
            factory.CreateNodeMap(), [](INodeMap *made) { CastToIDestroy(made)->Destroy(); });
        QVERIFY(map->Connect(&port));
        NodeList_t nodes;
        map->GetNodes(nodes);
        for (INode *node : nodes) {
            node->GetAccessMode(); // parses the formulas
            for (const char *gate : {"pIsImplemented", "pIsAvailable", "pIsLocked"}) {
                gcstring name, attribute;
                if (node->GetProperty(gate, name, attribute))
                    QVERIFY2(map->GetNode(name)->GetPrincipalInterfaceType() != intfIFloat, node->GetName().c_str());
            }
        }
        QCOMPARE(QByteArray::fromStdString(log.text()), QByteArray());
    }
};

QTEST_APPLESS_MAIN(tst_ShippedDescriptions)
#include "tst_ShippedDescriptions.moc"
