// SPDX-License-Identifier: MIT
#include <QAbstractItemModelTester>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidgetItemIterator>
#include <QWheelEvent>

#include "Host/HostContext.h"
#include "TestDevice.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/GlyphIcons.h"
#include "Viewer/ImageView.h"
#include "Viewer/LogModel.h"
#include "Viewer/ViewerOptions.h"

namespace {

QImage chequered(int width, int height)
{
    QImage image(width, height, QImage::Format_Grayscale8);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.scanLine(y)[x] = uchar((x + y) % 256);
    }
    return image;
}

void turnWheel(QWidget &widget, const QPoint &position, int notches)
{
    QWheelEvent event(position, widget.mapToGlobal(position), {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

void pointAt(QWidget &widget, const QPoint &position)
{
    QMouseEvent event(QEvent::MouseMove, position, widget.mapToGlobal(position), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

QString stateText(const DeviceTree &tree, const QString &id)
{
    for (QTreeWidgetItemIterator item(const_cast<DeviceTree *>(&tree)); *item; ++item) {
        if ((*item)->text(0) == id)
            return (*item)->text(1);
    }
    return QString();
}

} // namespace

class tst_Viewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void parsesOptions_data();
    void parsesOptions();
    void fitsTheImage_data();
    void fitsTheImage();
    void wheelKeepsThePixelUnderTheCursor();
    void zoomStaysInItsRange();
    void readsThePixelUnderTheCursor();
    void forgetsTheFrame();
    void rateEndsWithTheFrames();
    void logIsBounded();
    void logCountsRepetitions();
    void everyGlyphIsDrawn();
    void treeFollowsTheDevices();
    void treeShowsALostDevice();

private:
    QTemporaryDir m_directory;
};

void tst_Viewer::initTestCase()
{
    QVERIFY(m_directory.isValid());
}

void tst_Viewer::parsesOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("textOnly");
    const auto list = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    QTest::newRow("nothing") << list("viewer") << true << false;
    QTest::newRow("window") << list("viewer --genicam a.xml --language Chinese") << true << false;
    QTest::newRow("dump of a file") << list("viewer --dump --genicam a.xml") << true << true;
    QTest::newRow("dump of a device") << list("viewer --dump --device D") << true << true;
    QTest::newRow("dump of nothing") << list("viewer --dump") << false << true;
    QTest::newRow("dump of two things") << list("viewer --dump --device D --genicam a.xml") << false << true;
    QTest::newRow("language") << list("viewer --language Klingon") << false << true;
    QTest::newRow("unknown") << list("viewer --unknown") << false << true;
    QTest::newRow("value missing") << list("viewer --device") << false << true;
    QTest::newRow("stray word") << list("viewer stray") << false << true;
    QTest::newRow("help") << list("viewer -h") << true << true;
}

void tst_Viewer::parsesOptions()
{
    QFETCH(QStringList, arguments);
    const ViewerOptions options = ViewerOptions::parse(arguments);
    QTEST(options.error.isEmpty(), "valid");
    QTEST(options.isTextOnly(), "textOnly");
}

void tst_Viewer::fitsTheImage_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<double>("zoom");
    QTest::newRow("wide") << QSize(800, 100) << 0.5;
    QTest::newRow("high") << QSize(100, 600) << 0.5;
    QTest::newRow("small") << QSize(100, 100) << 3.0;
}

void tst_Viewer::fitsTheImage()
{
    QFETCH(QSize, image);
    ImageView view;
    view.resize(400, 300);
    view.showFrame(chequered(image.width(), image.height()));
    QTEST(view.zoom(), "zoom");
    view.zoomToOriginal();
    QCOMPARE(view.zoom(), 1.0);
    QVERIFY(!view.isFitted());
    view.zoomToFit();
    QTEST(view.zoom(), "zoom");
}

void tst_Viewer::wheelKeepsThePixelUnderTheCursor()
{
    ImageView view;
    view.resize(400, 300);
    view.showFrame(chequered(800, 600));
    const QPoint cursor(100, 75);
    pointAt(view, cursor);
    const QString before = view.pixelText();
    QVERIFY(!before.isEmpty());
    turnWheel(view, cursor, 3);
    QVERIFY(view.zoom() > 0.5);
    QCOMPARE(view.pixelText(), before);
}

void tst_Viewer::zoomStaysInItsRange()
{
    ImageView view;
    view.resize(400, 300);
    view.showFrame(chequered(800, 600));
    turnWheel(view, {200, 150}, 200);
    QCOMPARE(view.zoom(), ImageView::MaximumZoom);
    turnWheel(view, {200, 150}, -400);
    QCOMPARE(view.zoom(), ImageView::MinimumZoom);
}

void tst_Viewer::readsThePixelUnderTheCursor()
{
    ImageView view;
    view.resize(100, 200);
    view.showFrame(chequered(100, 100));
    pointAt(view, {10, 70});
    QCOMPARE(view.pixelText(), QStringLiteral("(10, 20): 30"));
    pointAt(view, {10, 20});
    QCOMPARE(view.pixelText(), QString());
    view.showFrame(chequered(100, 100).convertToFormat(QImage::Format_RGB888)); // a gray scene in colour
    pointAt(view, {10, 70});
    QCOMPARE(view.pixelText(), QStringLiteral("(10, 20): 30, 30, 30"));
}

void tst_Viewer::forgetsTheFrame()
{
    ImageView view;
    view.resize(100, 100);
    view.showFrame(chequered(10, 10));
    view.clear(QStringLiteral("Nothing here"));
    QVERIFY(view.frame().isNull());
    QCOMPARE(view.framesPerSecond(), 0.0);
    turnWheel(view, {50, 50}, 1);
    QTest::mouseDClick(&view, Qt::LeftButton);
    QVERIFY(view.isFitted()); // what comes next
}

void tst_Viewer::rateEndsWithTheFrames()
{
    ImageView view;
    QTRY_VERIFY((view.showFrame(chequered(10, 10)), view.framesPerSecond() > 0));
    QTRY_COMPARE(view.framesPerSecond(), 0.0);
}

void tst_Viewer::logIsBounded()
{
    LogModel log;
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(0);
    const auto append = [&](int line) { log.append(time, QStringLiteral("Module"), QString::number(line)); };
    for (int line = 0; line < LogModel::MaximumLines; ++line)
        append(line);
    const QAbstractItemModelTester tester(&log);
    append(LogModel::MaximumLines);
    QCOMPARE(log.rowCount(), int(LogModel::MaximumLines));
    QVERIFY(log.lineText(0).endsWith(QStringLiteral("\tModule\t1")));
    QVERIFY(log.lineText(log.rowCount() - 1).endsWith(QString::number(LogModel::MaximumLines)));
    log.clear();
    QCOMPARE(log.rowCount(), 0);
}

void tst_Viewer::logCountsRepetitions()
{
    LogModel log;
    const QAbstractItemModelTester tester(&log);
    const auto append = [&](int second, const char *module, const char *message) {
        log.append(QDateTime({2024, 1, 1}, QTime(0, 0, second)), QLatin1String(module), QLatin1String(message));
    };
    append(1, "Host", "refused %2");
    append(2, "Host", "refused %2");
    append(3, "Host", "refused %2");
    append(4, "Panel", "refused %2");
    append(5, "Host", "refused %2");
    QCOMPARE(log.rowCount(), 3);
    QCOMPARE(log.lineText(0), QString::fromUtf8("00:00:03.000\tHost\trefused %2 (\u00d73)"));
    QCOMPARE(log.lineText(2), QStringLiteral("00:00:05.000\tHost\trefused %2"));
}

void tst_Viewer::everyGlyphIsDrawn()
{
    QVERIFY(glyphIcon(Glyph::None).isNull());
    for (int glyph = int(Glyph::None) + 1; glyph <= int(Glyph::Card); ++glyph) {
        const QImage image = glyphIcon(Glyph(glyph)).pixmap(24, 24).toImage();
        QImage empty(image.size(), image.format());
        empty.fill(Qt::transparent);
        QVERIFY2(image != empty, qPrintable(QString::number(glyph)));
    }
}

void tst_Viewer::treeFollowsTheDevices()
{
    HostContext context({m_directory.filePath(QStringLiteral("follow.ini")), {}});
    const QString camera = QStringLiteral("camera");
    const QString card = QStringLiteral("card");
    DeviceTree tree(context);
    context.devices().add(std::make_unique<TestDevice>(card, Device::Kind::Card));
    context.devices().add(std::make_unique<TestDevice>(camera, Device::Kind::Camera));
    QCOMPARE(tree.topLevelItemCount(), 2);
    QCOMPARE(tree.topLevelItem(1)->child(0)->text(0), card);

    QVERIFY(tree.select(camera));
    QCOMPARE(context.focus().id(), camera);
    QCOMPARE(stateText(tree, camera), QStringLiteral("Closed"));
    QVERIFY(context.sessions().open(camera));
    QCOMPARE(stateText(tree, camera), QStringLiteral("Open"));
    QVERIFY(context.sessions().startAcquisition(camera));
    QCOMPARE(stateText(tree, camera), QStringLiteral("Acquiring"));
    context.sessions().close(camera);
    QCOMPARE(stateText(tree, camera), QStringLiteral("Closed"));

    tree.setCurrentItem(tree.topLevelItem(0));
    QCOMPARE(context.focus().id(), QString());
    QVERIFY(!tree.currentDevice());
}

void tst_Viewer::treeShowsALostDevice()
{
    HostContext context({m_directory.filePath(QStringLiteral("lost.ini")), {}});
    const QString id = QStringLiteral("camera");
    context.devices().add(std::make_unique<TestDevice>(id, Device::Kind::Camera));
    DeviceTree tree(context);
    QVERIFY(context.sessions().open(id));
    Q_EMIT context.devices().device(id)->lost(QStringLiteral("cable"));
    QCOMPARE(tree.state(id), DeviceTree::State::Lost);
    QTRY_VERIFY(!context.devices().device(id)->isOpen());
    QCOMPARE(stateText(tree, id), QStringLiteral("Lost"));
    QVERIFY(context.sessions().open(id));
    QCOMPARE(stateText(tree, id), QStringLiteral("Open"));
}

QTEST_MAIN(tst_Viewer)
#include "tst_Viewer.moc"
