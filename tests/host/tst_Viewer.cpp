// SPDX-License-Identifier: MIT
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QToolBar>
#include <QTreeWidgetItemIterator>
#include <QWheelEvent>
#include <QtTest>

#include "Host/HostContext.h"
#include "TestDevice.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/FeatureDump.h"
#include "Viewer/GlyphIcons.h"
#include "Viewer/ImageView.h"
#include "Viewer/LogModel.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerOptions.h"

namespace {

const QString Camera = QStringLiteral("camera");

/// Shows a frame whose pixels have the sum of their coordinates as value.
struct View : ImageView
{
    View(const QSize &size, const QSize &image)
    {
        resize(size);
        QImage frame(image, QImage::Format_Grayscale8);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                frame.scanLine(y)[x] = uchar((x + y) % 256);
        }
        showFrame(frame);
    }
};

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

QString stateText(DeviceTree &tree)
{
    QTreeWidgetItemIterator item(&tree, QTreeWidgetItemIterator::NoChildren);
    while (*item && (*item)->text(0) != Camera)
        ++item;
    return *item ? (*item)->text(1) : QString();
}

} // namespace

class tst_Viewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parsesOptions()
    {
        const std::tuple<const char *, bool, bool> rows[] = {
            {"viewer", true, false},
            {"viewer --developer --genicam a.xml --language Chinese", true, false},
            {"viewer --dump --genicam a.xml", true, true},
            {"viewer --unknown", false, true},
            {"viewer --dump --device D", true, true},
            {"viewer --dump", false, true},
            {"viewer --list-transports --producer a.cti --producer b.cti", true, true},
            {"viewer --list-transports --dump --device D", false, true},
            {"viewer --dump --device D --genicam a.xml", false, true},
            {"viewer --language Klingon", false, true},
            {"viewer stray", false, true},
            {"viewer -h", true, true},
        };
        for (const auto &[arguments, valid, textOnly] : rows) {
            const QString line = QString::fromLatin1(arguments);
            const ViewerOptions options = ViewerOptions::parse(line.split(QLatin1Char(' ')));
            QVERIFY2(options.error.isEmpty() == valid, arguments);
            QVERIFY2(options.isTextOnly() == textOnly, arguments);
            QVERIFY2(options.producers.size() == line.count(QLatin1String("--producer ")), arguments);
            QVERIFY2(options.developer == line.contains(QLatin1String("--developer")), arguments);
        }
        QVERIFY(ViewerOptions::helpText().contains(QLatin1String("--developer")));
    }

    void developersGetTheirSwitches()
    {
        QMainWindow window;
        ViewerCommands commands(window.menuBar(), window.addToolBar(QString()));
        const QMenu *view = window.menuBar()->actions().at(2)->menu();
        QVERIFY(view->actions().contains(commands.action(Command::ZoomFit)));
        for (const QAction *action : view->actions())
            QVERIFY2(!action->menu() && action != commands.action(Command::LoseFrames), qPrintable(action->text()));
        commands.showDeveloperMenu();
        const QMenu *switches = view->actions().last()->menu();
        QVERIFY(switches);
        QCOMPARE(switches->title(), QStringLiteral("&Developer"));
        for (const Command command : {Command::ShowCommonTab, Command::ShowAttributeTab, Command::DisablePanel,
                                      Command::LoseFrames, Command::EnlargeFrames, Command::Unplug, Command::Silence})
            QVERIFY(switches->actions().contains(commands.action(command)));
        QVERIFY(switches->actions().last()->menu()->actions().contains(commands.action(Command::DefaultMode1)));
    }

    void fitsTheImage()
    {
        const std::pair<QSize, double> rows[] = {{{800, 100}, 0.5}, {{100, 600}, 0.5}, {{100, 100}, 3.0}};
        for (const auto &[size, zoom] : rows) {
            View view({400, 300}, size);
            QCOMPARE(view.zoom(), zoom);
            view.zoomToOriginal();
            QCOMPARE(view.zoom(), 1.0);
            QVERIFY(!view.isFitted());
            view.zoomToFit();
            QCOMPARE(view.zoom(), zoom);
        }
    }

    void wheelZoomsAroundTheCursor()
    {
        View view({400, 300}, {800, 600});
        const QPoint cursor(100, 75);
        pointAt(view, cursor);
        const QString before = view.pixelText();
        QVERIFY(!before.isEmpty());
        turnWheel(view, cursor, 3);
        QVERIFY(view.zoom() > 0.5);
        QCOMPARE(view.pixelText(), before);
        turnWheel(view, cursor, 200);
        QCOMPARE(view.zoom(), ImageZoom::Maximum);
        turnWheel(view, cursor, -400);
        QCOMPARE(view.zoom(), ImageZoom::Minimum);
    }

    void readsThePixelUnderTheCursor()
    {
        View view({100, 200}, {100, 100});
        pointAt(view, {10, 70});
        QCOMPARE(view.pixelText(), QStringLiteral("(10, 20): 30"));
        pointAt(view, {10, 20});
        QCOMPARE(view.pixelText(), QString());
        view.showFrame(view.frame().convertToFormat(QImage::Format_RGB888)); // a gray scene in colour
        pointAt(view, {10, 70});
        QCOMPARE(view.pixelText(), QStringLiteral("(10, 20): 30, 30, 30"));
    }

    void forgetsTheFrame()
    {
        View view({100, 100}, {10, 10});
        view.clear(QStringLiteral("Nothing here"));
        QVERIFY(view.frame().isNull());
        QCOMPARE(view.framesPerSecond(), 0.0);
        turnWheel(view, {50, 50}, 1);
        QTest::mouseDClick(&view, Qt::LeftButton);
        QVERIFY(view.isFitted()); // what comes next
    }

    void logIsBoundedAndCountsRepetitions()
    {
        LogModel log;
        const auto append = [&](int line) { log.append({}, QStringLiteral("Module"), QString::number(line)); };
        for (int line = 0; line < LogModel::MaximumLines; ++line)
            append(line);
        const QAbstractItemModelTester tester(&log);
        append(LogModel::MaximumLines);
        QCOMPARE(log.rowCount(), int(LogModel::MaximumLines));
        QVERIFY(log.lineText(0).endsWith(QStringLiteral("\tModule\t1")));
        log.clear();
        QCOMPARE(log.rowCount(), 0);

        int second = 0;
        for (const char *module : {"Host", "Host", "Host", "Panel", "Host"})
            log.append(QDateTime({2024, 1, 1}, QTime(0, 0, ++second)), QLatin1String(module),
                       QStringLiteral("refused %2"));
        QCOMPARE(log.rowCount(), 3);
        QCOMPARE(log.lineText(0), QString::fromUtf8("00:00:03.000\tHost\trefused %2 (\u00d73)"));
        QCOMPARE(log.lineText(2), QStringLiteral("00:00:05.000\tHost\trefused %2"));
    }

    void everyGlyphIsDrawn()
    {
        QVERIFY(glyphIcon(Glyph::None).isNull());
        for (int glyph = int(Glyph::None) + 1; glyph <= int(Glyph::Card); ++glyph) {
            const QImage image = glyphIcon(Glyph(glyph)).pixmap(24, 24).toImage();
            QImage empty(image.size(), image.format());
            empty.fill(Qt::transparent);
            QVERIFY2(image != empty, qPrintable(QString::number(glyph)));
        }
    }

    void treeShowsTheDevices()
    {
        HostContext context({m_directory.filePath(QStringLiteral("viewer.ini")), {}});
        const QString card = QStringLiteral("card");
        DeviceTree tree(context);
        context.devices().add(std::make_unique<TestDevice>(card, Device::Kind::Card));
        context.devices().add(std::make_unique<TestDevice>(Camera));
        QCOMPARE(tree.topLevelItemCount(), 2);
        QCOMPARE(tree.topLevelItem(1)->child(0)->text(0), card);

        QVERIFY(tree.select(Camera));
        QCOMPARE(context.focus().id(), Camera);
        QCOMPARE(stateText(tree), QStringLiteral("Closed"));
        QVERIFY(context.sessions().open(Camera));
        QCOMPARE(stateText(tree), QStringLiteral("Open"));
        Q_EMIT context.devices().device(Camera)->lost(QStringLiteral("cable"));
        QCOMPARE(tree.state(Camera), DeviceTree::State::Lost);
        QTRY_VERIFY(!context.devices().device(Camera)->isOpen());
        QCOMPARE(stateText(tree), QStringLiteral("Lost"));
        QVERIFY(context.sessions().open(Camera));
        QCOMPARE(stateText(tree), QStringLiteral("Open"));
        QVERIFY(context.sessions().startAcquisition(Camera));
        QCOMPARE(stateText(tree), QStringLiteral("Acquiring"));
        context.sessions().close(Camera);
        QCOMPARE(stateText(tree), QStringLiteral("Closed"));
        tree.setCurrentItem(tree.topLevelItem(0));
        QCOMPARE(context.focus().id(), QString());
        QVERIFY(!tree.currentDevice());
    }

    void dumpsOneRowALine()
    {
        TestDevice device(QStringLiteral("cam"));
        QString error;
        QVERIFY2(device.open(&error), qPrintable(error));
        device.port.poke(TestDevice::WidthAddress, 64);
        device.port.poke(0x14, 640);
        GenApi::CFloatPtr(device.nodeMap()->GetNode("Gain"))->SetValue(1000000);
        const auto dump = [&device] { // the lines below the root category, without its path
            QString text;
            QTextStream stream(&text);
            dumpFeatures(*device.nodeMap(), stream);
            const QString root = text.section(QLatin1Char('\t'), 0, 0);
            return text.section(QLatin1Char('\n'), 1).remove(root + QLatin1Char('/'));
        };
        QCOMPARE(dump(),
                 QStringLiteral("Width\tInteger\tRW\tBeginner\t64\tnumber box\n"
                                "Gain\tFloat\tRW\tBeginner\t1000000\tfloat box\n"
                                "ReverseX\tBoolean\tRW\tBeginner\tFalse\tboolean\n"
                                "PixelFormat\tEnumeration\tRW\tBeginner\tMono8\tlist\n"
                                "DeviceUserID\tString\tRW\tBeginner\tleft\ttext\n"
                                "TriggerSoftware\tCommand\tWO\tBeginner\t{Execute}\tbutton\n"
                                "SensorWidth\tInteger\tRO\tBeginner\t640\t-\n"));
        device.port.readFault = MemoryPort::Fault::Timeout; // does not end it
        device.nodeMap()->InvalidateNodes();
        const QString lines = dump();
        QCOMPARE(lines.count(QLatin1Char('\n')), 7);
        QVERIFY2(lines.contains(QStringLiteral("DeviceUserID\tString\tRW\tBeginner\tleft\ttext\n")), qPrintable(lines));
    }

private:
    QTemporaryDir m_directory;
};

QTEST_MAIN(tst_Viewer)
#include "tst_Viewer.moc"
