// SPDX-License-Identifier: MIT
#include <QMenu>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeView>

#include "Devices/MergedFinder.h"
#include "Viewer/ImageView.h"
#include "Viewer/ProducerTable.h"
#include "Viewer/ProducersDialog.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "host/TestHost.h"
#include "host/TestProducer.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

using State = DeviceTree::State;
using TestedProducer::tell;

QString idOf(const char *way, const QString &producer = TestedProducer::file())
{
    return text("gentl:%1/%2").arg(producer, text(way));
}

/// A button of the dialog that may be pressed.
QPushButton *button(const ProducersDialog &dialog, const char *name)
{
    auto *const found = dialog.findChild<QPushButton *>(text(name));
    return found && found->isEnabled() ? found : nullptr;
}

} // namespace

/// The viewer with devices that a GenTL producer reaches.
class tst_ViewerProducers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile broken(m_broken);
        QVERIFY(broken.open(QFile::WriteOnly) && broken.write("no library") > 0);
        QVERIFY(QFile::copy(TestedProducer::file(), m_second));
    }
    void init()
    {
        qputenv("GENICAM_GENTL64_PATH", "/nowhere");
        tell("clear; power-up");
        m_host.renew();
        begin({TestedProducer::file()});
    }
    void cleanup()
    {
        end();
        QCOMPARE(TestedProducer::leftovers(), QByteArray());
    }

    void eachProducerHasARow()
    {
        end();
        qputenv("GENICAM_GENTL64_PATH", QFile::encodeName(m_folder.path()));
        m_host.start();
        m_host->producers().setOn(m_second, false);
        begin({TestedProducer::file()});
        ProducersDialog &dialog = showDialog();
        dialog.add({text("/nowhere/maker.cti")});
        auto &table = *dialog.findChild<ProducerTable *>();
        const struct
        {
            const char *file, *vendor, *transports, *origin, *state, *details;
            bool isOn, canRemove, canCheck;
        } rows[] = {
            {"paramter-test.cti", "Demo", "GigE Vision, CoaXPress", "Command line", "Interfaces: 2, cameras: 3",
             "Laser profiler SIM-PROFILER-01, free", true, false, true},
            {"broken.cti", "", "", "Environment", "Not used: it is no shared library", "no shared library", true, false,
             true},
            {"second.cti", "", "", "Environment", "Switched off", "Switched off", false, false, false},
            {"maker.cti", "", "", "Settings", "Not used: there is no such file", "/nowhere/maker.cti", true, true,
             true},
        };
        QCOMPARE(table.topLevelItemCount(), int(std::size(rows)));
        for (const auto &row : rows) {
            QTreeWidgetItem *const item = table.topLevelItem(int(&row - rows));
            QTRY_COMPARE_WITH_TIMEOUT(item->text(ProducerTable::StateColumn), text(row.state), 20'000);
            QCOMPARE(item->text(ProducerTable::FileColumn), text(row.file));
            QVERIFY2(item->text(ProducerTable::VendorColumn) == text(row.vendor), row.file);
            QVERIFY2(item->text(ProducerTable::TransportColumn) == text(row.transports), row.file);
            QVERIFY2(item->text(ProducerTable::OriginColumn) == text(row.origin), row.file);
            QVERIFY2((item->checkState(ProducerTable::FileColumn) == Qt::Checked) == row.isOn, row.file);
            table.setCurrentItem(item);
            const QString details = dialog.findChild<QPlainTextEdit *>(text("producerDetails"))->toPlainText();
            QVERIFY2(details.contains(text(row.details)), qPrintable(details));
            QVERIFY2((button(dialog, "removeProducer") != nullptr) == row.canRemove, row.file);
            QVERIFY2((button(dialog, "checkProducerAgain") != nullptr) == row.canCheck, row.file);
        }
        table.setCurrentItem(table.topLevelItem(0));
        QTest::keyClick(&table, Qt::Key_Space); // always on
        QVERIFY(m_host->producers().files().first().isOn);
    }

    /// By keys only.
    void aProducerIsAddedAndSwitchedOff()
    {
        end();
        begin({});
        ProducersDialog &dialog = showDialog();
        auto &table = *dialog.findChild<ProducerTable *>();
        dialog.add({m_broken, TestedProducer::file()});
        QTRY_VERIFY_WITH_TIMEOUT(m_host->devices().device(idOf("GEV-IF/GEV-AREA")), 20'000);
        QVERIFY(m_window->devices().select(idOf("GEV-IF/GEV-AREA")));
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Down);
        for (const bool on : {false, true}) {
            QTest::keyClick(&table, Qt::Key_Space);
            QCOMPARE(m_host->producers().files().last().isOn, on);
            QTRY_COMPARE(m_host->devices().all().isEmpty(), !on);
        }
        QVERIFY(table.hasFocus() && table.current()->file.path == TestedProducer::file());
        QTest::keyClick(&dialog, Qt::Key_R, Qt::AltModifier);
        QTRY_VERIFY(m_host->devices().all().isEmpty());
        QCOMPARE(table.topLevelItemCount(), 1);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QTRY_VERIFY(!m_window->findChild<ProducersDialog *>());
    }

    void panelsAreShown()
    {
        const struct
        {
            const char *way;
            const char *feature;
            bool isCamera;
        } rows[] = {{"CXP-IF", "InterfaceID", false}, {"GEV-IF/GEV-AREA", "Width", true}};
        for (const auto &row : rows) {
            openPanel(idOf(row.way));
            m_stage->panel().openTab(m_stage->panel().tabs()->count() - 1);
            QVERIFY2(m_stage->tree().feature(text(row.feature)).isValid(), row.way);
            QCOMPARE(m_window->commands().action(Command::StartAcquisition)->isEnabled(), row.isCamera);
        }
        QVERIFY(m_host->sessions().startAcquisition(idOf("GEV-IF/GEV-AREA")));
        QTRY_VERIFY(m_window->image().framesPerSecond() > 0);
    }

    /// The same entries by the context-menu key and in the menu bar.
    void modulesOpenFromTheMenus()
    {
        const QString camera = idOf("GEV-IF/GEV-AREA");
        openPanel(camera);
        const QStringList opening{text("Open device module"), text("Open stream Stream0")};
        QMenu &menu = contextMenu();
        const QStringList entries = textsOf(menu);
        QVERIFY2(entries.mid(entries.size() - 2) == opening, qPrintable(entries.join(QLatin1Char('|'))));
        menu.hide();
        QMenu &inBar = *m_window->commands().deviceMenu();
        inBar.popup({});
        QCOMPARE(textsOf(inBar).mid(textsOf(inBar).size() - 2), opening);
        inBar.hide();
        inBar.actions().last()->trigger();
        const Device *const module = m_window->devices().currentDevice();
        QVERIFY(module && module->kind() == Device::Kind::Card);
        QTRY_COMPARE(m_window->devices().state(module->id()), State::Open);
        inBar.popup({}); // of a module: no modules, and those of before are gone
        QVERIFY(!textsOf(inBar).contains(opening.first()));
        inBar.hide();
        m_host->sessions().close(camera);
        const QString id = module->id();
        QTRY_VERIFY(!m_host->devices().device(id) && m_window->devices().state(camera) == State::Closed);
    }

    void unpluggedAndBack()
    {
        const QString camera = idOf("GEV-IF/GEV-AREA");
        openPanel(camera);
        QVERIFY(m_host->sessions().startAcquisition(camera));
        tell("vanish GEV-AREA");
        QTRY_COMPARE(m_window->devices().state(camera), State::Lost);
        tell("return GEV-AREA");
        QTRY_VERIFY_WITH_TIMEOUT(search() && m_window->devices().state(camera) == State::Acquiring, 20'000);
    }

    void whatAnotherProgramHasIsTold()
    {
        const struct
        {
            const char *script, *words;
            bool opens;
        } rows[] = {
            {"hold GEV-AREA control", "open for reading only", true},
            {"hold GEV-AREA exclusive", "it is in use by another program", false},
        };
        const QString camera = idOf("GEV-IF/GEV-AREA");
        for (const auto &row : rows) {
            tell(row.script);
            m_window->openWhenKnown(camera);
            QTRY_VERIFY2(m_stage->isLogged(text(row.words)), qPrintable(m_host.log.join(QLatin1Char('\n'))));
            QTRY_COMPARE(m_window->devices().state(camera), row.opens ? State::Open : State::Closed);
            m_host->sessions().close(camera);
            QTRY_COMPARE(m_host->devices().state(camera), KnownDevices::State::Closed);
        }
    }

    void aWayIsChosen()
    {
        const QString camera = idOf("GEV-IF/GEV-AREA");
        const QString other = idOf("GEV-IF/GEV-AREA", m_second);
        m_host->producers().add(m_second);
        QVERIFY(search());
        QVERIFY(m_window->devices().select(camera));
        const QStringList before = listed();
        for (const bool there : {true, false}) {
            QMenu &menu = contextMenu();
            const auto *const routes = m_window->findChild<QMenu *>(text("routeMenu"));
            QVERIFY(menu.actions().contains(routes->menuAction()) && routes->isEnabled());
            QCOMPARE(textsOf(*routes),
                     QStringList(
                         {text("paramter-test.cti, Test network adapter"), text("second.cti, Test network adapter")}));
            QCOMPARE(routes->actions()[there ? 0 : 1]->isChecked(), true);
            menu.hide();
            routes->actions()[there ? 1 : 0]->trigger();
            const QString wanted = there ? other : camera;
            QTRY_VERIFY(m_window->devices().currentDevice() && m_window->devices().currentDevice()->id() == wanted);
            QStringList expected = before;
            expected[expected.indexOf(camera)] = wanted;
            QCOMPARE(listed(), expected);
            QCOMPARE(m_host->focus().id(), wanted);
        }
        openPanel(camera);
        m_host->producers().chooseRoute(cameraKey(*m_host->devices().finding(camera)), other);
        QVERIFY(search());
        QCOMPARE(listed(), before); // it is in use
        contextMenu().hide();
        QVERIFY(!m_window->findChild<QMenu *>(text("routeMenu"))->isEnabled());
    }

    void theWholeChainIsPrinted()
    {
        QProcess viewer;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("GENICAM_GENTL64_PATH"), m_folder.path() + text(":/nowhere"));
        viewer.setProcessEnvironment(environment);
        viewer.start(text(VIEWER),
                     {text("--list-transports"), text("--settings"), m_folder.filePath(text("list.ini")),
                      text("--producer"), TestedProducer::file(), text("--producer"), text("/nowhere/maker.cti")});
        QVERIFY(viewer.waitForFinished(60'000));
        const QString output = QString::fromUtf8(viewer.readAllStandardOutput());
        QVERIFY2(viewer.exitStatus() == QProcess::NormalExit && viewer.exitCode() == 0, qPrintable(output));
        for (const char *line :
             {"Built-in search", "Fake_1: vendor Aravis", ": broken.cti, second.cti",
              "/nowhere: there is no such directory", "from the command line, on", "version 1.0",
              "not used: there is no such file", "not used: it is no shared library",
              "interface CXP-IF, Test frame grabber, transport CXP", "serial SIM-SL-01, transport CXP, free",
              "used: paramter-test.cti, Test frame grabber", "also: second.cti, Test frame grabber"})
            QVERIFY2(output.contains(text(line)), qPrintable(text(line) + text(" is not in\n") + output));
    }

private:
    void begin(const QStringList &given)
    {
        m_host.start({}, OncePerMinute::steadyTime, given);
        m_window = std::make_unique<ViewerWindow>(*m_host);
        m_window->show();
        m_stage = std::make_unique<TourStage>(*m_window);
        QVERIFY(search());
    }
    void end()
    {
        m_stage.reset();
        m_window.reset();
        m_host.end();
    }
    bool search()
    {
        const QSignalSpy ended(&m_host->devices(), &KnownDevices::searched);
        m_host->devices().refresh();
        return QTest::qWaitFor([&] { return !ended.isEmpty(); }, 30'000);
    }
    ProducersDialog &showDialog()
    {
        m_window->commands().action(Command::Producers)->trigger();
        return *m_window->findChild<ProducersDialog *>();
    }
    void openPanel(const QString &id)
    {
        const QWidget *const before = m_stage->panel().widget();
        m_window->openWhenKnown(id);
        QTRY_COMPARE(m_window->devices().state(id), State::Open);
        QTRY_VERIFY(m_stage->panel().widget() != before && m_stage->tree().view() && m_stage->tree().view()->model());
    }
    /// Of the current device, by its key.
    QMenu &contextMenu()
    {
        DeviceTree &tree = m_window->devices();
        QContextMenuEvent event(QContextMenuEvent::Keyboard,
                                tree.inputMethodQuery(Qt::ImCursorRectangle).toRect().center());
        QCoreApplication::sendEvent(&tree, &event);
        const QList<QMenu *> all = m_window->findChildren<QMenu *>(text("contextMenu"));
        if (all.isEmpty())
            qFatal("the key opens no menu");
        return *all.last();
    }
    static QStringList textsOf(const QMenu &menu)
    {
        QStringList texts;
        for (const QAction *action : menu.actions())
            texts << action->text();
        return texts;
    }
    QStringList listed() const
    {
        QStringList ids;
        for (const Device *device : m_host->devices().all())
            ids << device->id();
        return ids;
    }

    QTemporaryDir m_folder;
    const QString m_broken = QFileInfo(m_folder.path()).canonicalFilePath() + text("/broken.cti");
    const QString m_second = QFileInfo(m_folder.path()).canonicalFilePath() + text("/second.cti");
    TestHost m_host;
    std::unique_ptr<ViewerWindow> m_window;
    std::unique_ptr<TourStage> m_stage;
};

QTEST_MAIN(tst_ViewerProducers)
#include "tst_ViewerProducers.moc"
