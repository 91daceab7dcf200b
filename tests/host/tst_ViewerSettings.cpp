// SPDX-License-Identifier: MIT
#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>
#include <QtTest>

#include "Simulation/SimulatedDevice.h"
#include "Tools/SettingsFile.h"
#include "Viewer/CompareDialog.h"
#include "Viewer/DeviceSettings.h"
#include "Viewer/LoadDialog.h"
#include "Viewer/SettingsCommands.h"
#include "Viewer/SettingsTable.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "Viewer/WalkDialog.h"
#include "host/TestHost.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

const QString Camera = QStringLiteral("SIM-AREA-01");
const QString Other = QStringLiteral("SIM-AREA-02");

struct ImportListener final : HostCore::IImportUpdate
{
    ImportListener() { HostCore::RegisterImportUpdateListener(this); }
    ~ImportListener() { HostCore::UnRegisterImportUpdateListener(this); }
    void OnUpdate(std::string id) override { ids << QString::fromStdString(id); }

    QStringList ids;
};

const SettingsModel::Row *rowOf(SettingsTable &table, const char *feature)
{
    for (const SettingsModel::Row &row : table.settings().rows()) {
        if (row.feature == text(feature))
            return &row;
    }
    return nullptr;
}

/// Ticks these features and no others.
void tick(SettingsTable &table, const QByteArrayList &features)
{
    for (int row = 0; row < table.settings().rowCount(); ++row) {
        const QByteArray feature = table.settings().rows()[std::size_t(row)].feature.toUtf8();
        table.settings().choose({row}, features.contains(feature));
    }
}

} // namespace

/// Saving, loading and comparing settings in the viewer.
class tst_ViewerSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host.renewSimulated();
        m_window = std::make_unique<ViewerWindow>(*m_host);
        m_window->show();
        m_stage = std::make_unique<TourStage>(*m_window);
        m_window->openWhenKnown(Camera);
        QTRY_VERIFY(m_stage->tree().view() && m_stage->tree().view()->model());
        m_file = m_folder.filePath(text("camera.txt"));
    }

    void cleanup()
    {
        m_stage.reset();
        m_window.reset();
        m_host.end();
    }

    void savedIsLoadedAgain()
    {
        QVERIFY(m_host.acquire("SIM-AREA-01")); // which locks settings
        commands().save(Camera, m_file);
        QVERIFY2(m_stage->isLogged(text("were saved in")), qPrintable(m_host.log.join(QLatin1Char('\n'))));
        QVERIFY(m_host.device("SIM-AREA-01")->isAcquiring());
        m_host.set("SIM-AREA-01", "ExposureTime=4321 Gain=3.5");
        const QSignalSpy written(&commands().settings(), &DeviceSettings::written);
        const ImportListener imports;
        LoadDialog *const dialog = plan(m_file);
        QVERIFY(dialog && rowOf(dialog->table(), "Width"));
        QVERIFY(rowOf(dialog->table(), "ExposureTime")->isDifferent && !rowOf(dialog->table(), "Width")->isDifferent);
        QVERIFY(acquiresAgain(*dialog)->isVisible());
        dialog->accept();
        QCOMPARE(m_host.number("SIM-AREA-01", "ExposureTime"), 10000.0);
        QCOMPARE(rowOf(dialog->table(), "ExposureTime")->result, text("written"));
        QVERIFY(written.size() >= 2 && imports.ids.contains(Camera));
        QVERIFY(m_host.device("SIM-AREA-01")->isAcquiring());
        dialog->reject();

        QVERIFY(!m_window->commands().recentMenu()->isEmpty());
        m_window->commands().recentMenu()->actions().first()->trigger(); // has nothing to write
        LoadDialog *const again = dialogOf<LoadDialog>();
        QVERIFY(again);
        QCOMPARE(stateOf(*again), text("Nothing is to be written."));
        again->reject();
    }

    void aFreshCameraBecomesTheSame()
    {
        m_host.set("SIM-AREA-01",
                   "BinningHorizontal=2 Width=640 OffsetX=64 Height=480 OffsetY=32 ReverseX=True "
                   "ExposureTime=1234.5 Gain=3.7 TriggerSelector=FrameBurstStart TriggerMode=On LUTSelector=Luminance "
                   "LUTEnable=True LUTIndex=7 LUTValue=200 LineSelector=Line2 LineInverter=True DeviceUserID=it's");
        commands().save(Camera, m_file);
        cleanup();
        init();
        LoadDialog *const dialog = plan(m_file);
        dialog->accept();
        QVERIFY2(stateOf(*dialog).contains(text("Did not take: 0. Not tried: 0.")), qPrintable(stateOf(*dialog)));
        dialog->reject();
        const QString second = m_folder.filePath(text("second.txt"));
        commands().save(Camera, second);
        const std::optional<Persistence::Settings> left = SettingsFile::read(m_file, &m_error);
        const std::optional<Persistence::Settings> right = SettingsFile::read(second, &m_error);
        QVERIFY(left && right);
        const SettingsDiff diff(*left, *right);
        for (const SettingsDiff::Row &row : diff.rows())
            QVERIFY2(row.left == row.right, qPrintable(row.feature + row.position));
        LoadDialog *const again = plan(m_file);
        QCOMPARE(stateOf(*again), text("Nothing is to be written."));
        again->reject();
    }

    void acquisitionStartsAgainIfWanted()
    {
        write({{"ExposureTime", "2500"}});
        for (const bool again : {false, true}) {
            m_host.set("SIM-AREA-01", "ExposureTime=4321");
            QVERIFY(m_host.acquire("SIM-AREA-01"));
            LoadDialog *const dialog = plan(m_file);
            acquiresAgain(*dialog)->setChecked(again);
            dialog->accept();
            QCOMPARE(m_host.device("SIM-AREA-01")->isAcquiring(), again);
            dialog->reject();
            QCOMPARE(m_host.number("SIM-AREA-01", "ExposureTime"), 2500.0);
            m_host->sessions().stopAcquisition(Camera);
            QCOMPARE(commands().settings().isAcquiringAgain(), again);
        }
    }

    void refusedRowsStandThere()
    {
        const struct
        {
            const char *feature, *value, *words;
            bool isChosen;
        } rows[] = {
            {"ExposureTime", "2500", "written", true},
            {"Gain", "5", "", false},
            {"Width", "645", "The difference between Value = 645", true},
            {"Height", "99999", "99999", true},
            {"NoSuchFeature", "1", "no such feature", true},
        };
        std::vector<std::pair<const char *, const char *>> entries;
        QByteArrayList chosen;
        for (const auto &row : rows) {
            entries.push_back({row.feature, row.value});
            if (row.isChosen)
                chosen << row.feature;
        }
        write(entries);
        LoadDialog *const dialog = plan(m_file);
        tick(dialog->table(), chosen);
        dialog->accept();
        for (const auto &row : rows) {
            const SettingsModel::Row *const shown = rowOf(dialog->table(), row.feature);
            const QByteArray words = shown->result.toUtf8();
            QVERIFY2(words.contains(row.words) && words.isEmpty() == !row.isChosen, row.feature + (": " + words));
            QCOMPARE(shown->isFailed, row.isChosen && qstrcmp(row.words, "written") != 0);
        }
        QCOMPARE(dialog->table().view().model()->rowCount(), 3);
        QVERIFY(stateOf(*dialog).startsWith(text("Written: 1. Did not take: 3.")));
        QVERIFY(m_host.number("SIM-AREA-01", "Gain") != 5.0);
        for (const auto &row : rows) {
            const std::deque<WriteLog::Entry> &log = m_host->writeLog().entries();
            const auto last = std::find_if(log.rbegin(), log.rend(),
                                           [&](const auto &entry) { return entry.setting.feature == row.feature; });
            QVERIFY2((last != log.rend()) == row.isChosen, row.feature);
            QVERIFY2(!row.isChosen || last->isRefused() == (qstrcmp(row.words, "written") != 0), row.feature);
        }
        dialog->reject();
    }

    void otherModelsAreAskedFor()
    {
        write({{"ExposureTime", "2500"}}, "Spectrometer");
        for (const bool goesOn : {false, true}) {
            commands().load(m_file);
            auto *const box = m_window->findChild<QMessageBox *>(text("otherModel"));
            QVERIFY(box);
            for (const char *name : {"Demo Spectrometer", "Demo AreaScanCamera"})
                QVERIFY2(box->informativeText().contains(text(name)), name);
            for (QAbstractButton *button : box->buttons()) {
                if ((box->buttonRole(button) == QMessageBox::AcceptRole) == goesOn) {
                    button->click();
                    break;
                }
            }
            QCOMPARE(dialogOf<LoadDialog>() != nullptr, goesOn);
            QTRY_VERIFY(!m_window->findChild<QMessageBox *>());
        }
    }

    void badFilesAreTold()
    {
        const struct
        {
            const char *content, *message, *problem; ///< in the box; in the dialog
        } rows[] = {
            {"nonsense\n", "Cannot read", ""},
            {"", "Cannot read", ""},
            {"ExposureTime\t2500\nbroken\n", "", "4"},
        };
        write({});
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray head = file.readAll();
        file.close();
        for (const auto &row : rows) {
            const bool isRead = qstrlen(row.problem) > 0;
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write((isRead ? head : QByteArray()) + row.content) >= 0);
            file.close();
            QVERIFY(isDropped(m_file));
            const auto *const box = m_window->findChild<QMessageBox *>();
            QCOMPARE(box != nullptr, !isRead);
            QVERIFY(!box || box->text().contains(text(row.message)));
            LoadDialog *const dialog = dialogOf<LoadDialog>();
            QCOMPARE(dialog != nullptr, isRead);
            QVERIFY(
                !dialog
                || dialog->findChild<QPlainTextEdit *>(text("fileProblems"))->toPlainText().contains(text("broken")));
            closeDialogs();
        }
    }

    /// In the middle of writing.
    void loadsEndEarly()
    {
        const struct
        {
            const char *name;
            std::function<void()> interfere;
            const char *state;
            bool staysOpen;
        } rows[] = {
            {"cancelled", [this] { m_window->findChild<WalkDialog *>()->reject(); }, "Cancelled. ", true},
            {"lost", [this] { camera().setFault(SimulatedDevice::Fault::Drop); }, "The device was", false},
            {"closed", [this] { m_host->sessions().close(Camera); }, "The device was", false},
        };
        for (const auto &row : rows) {
            cleanup();
            init();
            write({{"ExposureTime", "2500"}, {"DeviceUserID", "left"}, {"Gain", "5"}, {"GammaEnable", "1"}});
            LoadDialog *const dialog = plan(m_file);
            connect(&commands().settings(), &DeviceSettings::written, dialog,
                    [&](const QString &, const Persistence::Entry &entry) {
                        if (entry.feature == "DeviceUserID")
                            row.interfere();
                    });
            dialog->accept();
            QStringList results;
            for (const SettingsModel::Row &shown : dialog->table().settings().rows())
                results << shown.result;
            QVERIFY2(results.join(QLatin1Char('|')) == text("written|written|not tried|not tried"),
                     qPrintable(text(row.name) + results.join(QLatin1Char('|'))));
            QVERIFY2(stateOf(*dialog).startsWith(text(row.state)), row.name);
            QCOMPARE(dialog->table().view().model()->rowCount(), 4);
            QCOMPARE(m_host.isReady("SIM-AREA-01"), row.staysOpen);
            dialog->reject();
        }
    }

    /// Nothing freezes meanwhile, nothing goes, and nothing else begins.
    void walksCanBeCancelled()
    {
        camera().setLatency(std::chrono::milliseconds(5));
        camera().nodeMap()->InvalidateNodes();
        bool isSeen = false, isClosed = false, isTaken = false;
        QTimer person;
        connect(&person, &QTimer::timeout, this, [&] {
            auto *const walk = m_window->findChild<WalkDialog *>();
            if (!walk || !walk->isVisible())
                return;
            isSeen = true;
            isClosed = m_window->close();
            isTaken = isTaken || isDropped(m_file);
            commands().load(m_file);
            QTest::keyClick(walk, Qt::Key_Escape);
        });
        person.start(10);
        QFile::remove(m_file);
        commands().save(Camera, m_file);
        QVERIFY(isSeen && !isClosed && m_window->isVisible());
        QVERIFY(!isTaken && !m_window->findChild<QDialog *>());
        QVERIFY(m_stage->isLogged(text("was cancelled")) && !QFile::exists(m_file));
    }

    /// It is not lost yet, but what is read of it is not all that it has.
    void aSilentDeviceLeavesTheFile()
    {
        write({{"ExposureTime", "1234"}, {"Gain", "5"}, {"Width", "640"}});
        camera().setLatency(std::chrono::milliseconds(5));
        camera().nodeMap()->InvalidateNodes();
        QTimer::singleShot(400, this, [this] { camera().setFault(SimulatedDevice::Fault::Timeout); });
        commands().save(Camera, m_file);
        QVERIFY(m_stage->isLogged(text("does not answer: its settings")));
        const std::optional<Persistence::Settings> left = SettingsFile::read(m_file, &m_error);
        QVERIFY(left && left->entries.size() == 3);
        commands().load(m_file);
        QVERIFY(!dialogOf<LoadDialog>());
    }

    void comparedAndCopied()
    {
        QVERIFY(m_host.open("SIM-AREA-02"));
        m_host.set("SIM-AREA-01", "ExposureTime=4321");
        write({{"ExposureTime", "1234"}, {"Gain", "5"}, {"Width", "645"}});
        const SettingsSource::Place one{Camera, {}}, two{Other, {}}, file{{}, m_file};
        const struct
        {
            const char *name;
            SettingsSource::Place left, right;
            QPushButton &(CompareDialog::*command)();
            QByteArrayList ticked;
            double first, second, inFile; ///< exposure times after it
            int failures;
        } rows[] = {
            {"to the right", one, two, &CompareDialog::toRight, {"ExposureTime"}, 4321, 4321, 1234, 0},
            {"to the left", one, file, &CompareDialog::toLeft, {"ExposureTime", "Width"}, 1234, 4321, 1234, 1},
            {"to all", file, one, &CompareDialog::toAll, {"ExposureTime"}, 1234, 1234, 1234, 0},
            {"into a file", one, file, &CompareDialog::toRight, {"ExposureTime"}, 777, 1234, 777, 0},
        };
        for (const auto &row : rows) {
            if (row.inFile == 777)
                m_host.set("SIM-AREA-01", "ExposureTime=777");
            CompareDialog *const dialog = commands().compare(row.left, row.right);
            QVERIFY(rowOf(dialog->table(), "ExposureTime"));
            tick(dialog->table(), row.ticked);
            QVERIFY2((dialog->*row.command)().isEnabled(), row.name);
            (dialog->*row.command)().click();
            QVERIFY2(m_host.number("SIM-AREA-01", "ExposureTime") == row.first, row.name);
            QVERIFY2(m_host.number("SIM-AREA-02", "ExposureTime") == row.second, row.name);
            const std::optional<Persistence::Settings> stored = SettingsFile::read(m_file, &m_error);
            QVERIFY2(stored && QString::fromStdString(stored->entries[0].value).toDouble() == row.inFile, row.name);
            int failures = 0;
            for (const SettingsModel::Row &shown : dialog->table().settings().rows())
                failures += shown.isFailed && shown.isChosen && !shown.result.isEmpty();
            QVERIFY2(failures == row.failures, row.name);
            dialog->reject();
        }
    }

    /// Keys may come faster than a dialog that returns.
    void comparisonIsClosedWhileItAsksForAFile()
    {
        const QPointer<CompareDialog> dialog = commands().compare({Camera, {}}, {});
        QComboBox &box = dialog->right().box();
        bool isAsked = false;
        QTimer::singleShot(0, this, [&] { // if asking waits, this is within
            isAsked = dialog->findChild<QFileDialog *>();
            dialog->reject();
        });
        Q_EMIT box.activated(box.count() - 1);
        QTRY_VERIFY(isAsked && !dialog);
    }

    void linesThatMakeNoSenseAreKept()
    {
        write({{"ExposureTime", "1234"}});
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::Append) && file.write("broken\n") > 0);
        file.close();
        CompareDialog *const dialog = commands().compare({Camera, {}}, {{}, m_file});
        QVERIFY(dialog->findChild<QLabel *>(text("compareState"))->text().contains(text("Left out of camera.txt: 1")));
        QVERIFY(m_stage->isLogged(text("'broken' has no value")));
        tick(dialog->table(), {"ExposureTime"});
        dialog->toRight().click();
        QVERIFY(dialog->findChild<QMessageBox *>());
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().endsWith("ExposureTime\t1234\nbroken\n"));
        closeDialogs();
    }

    void thousandsOfRowsAreFilteredSoon()
    {
        constexpr int Many = 5000;
        std::vector<SettingsModel::Row> rows(Many);
        for (int i = 0; i < Many; ++i) {
            rows[std::size_t(i)].feature = text("Feature%1").arg(i);
            rows[std::size_t(i)].isDifferent = i % 2;
        }
        SettingsTable table;
        table.settings().setRows(std::move(rows));
        table.show();
        auto *const search = table.findChild<QLineEdit *>(text("settingsSearch"));
        auto *const only = table.findChild<QCheckBox *>(text("settingsOnly"));
        const struct
        {
            const char *search;
            bool isOnly;
            int shown;
        } steps[] = {{"", true, 2500}, {"9", true, 880}, {"", false, Many}, {"9", false, 1355}};
        for (const auto &step : steps) {
            QElapsedTimer clock;
            clock.start();
            only->setChecked(step.isOnly);
            search->setText(text(step.search));
            QCoreApplication::processEvents();
            const auto elapsed = clock.elapsed();
            QVERIFY2(elapsed < 50, QByteArray::number(elapsed) + " ms");
            QCOMPARE(table.view().model()->rowCount(), step.shown);
        }
        QTRY_COMPARE(search->findChild<QAbstractButton *>()->property("opacity").toDouble(), 1.0); // or its fade stays
    }

private:
    using Entries = std::vector<std::pair<const char *, const char *>>;

    SettingsCommands &commands() const { return m_window->settingsCommands(); }
    bool isDropped(const QString &path) const
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &enter);
        QDropEvent event({}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(m_window.get(), &event);
        QCoreApplication::processEvents();
        return enter.isAccepted() && event.isAccepted();
    }
    LoadDialog *plan(const QString &path) const
    {
        commands().load(path);
        return dialogOf<LoadDialog>();
    }
    /// Of a file with these settings.
    void write(const Entries &entries, const char *model = "AreaScanCamera")
    {
        Persistence::Settings settings;
        settings.device.vendor = "Demo";
        settings.device.model = model;
        for (const auto &[feature, value] : entries)
            settings.entries.push_back({feature, {}, value});
        QVERIFY2(SettingsFile::write(m_file, settings, &m_error), qPrintable(m_error));
    }
    /// The one that is open, or null.
    template <class Dialog>
    Dialog *dialogOf() const
    {
        const QList<Dialog *> all = m_window->findChildren<Dialog *>();
        for (Dialog *one : all) {
            if (one->isVisible())
                return one;
        }
        return nullptr;
    }
    void closeDialogs() const
    {
        const QList<QDialog *> all = m_window->findChildren<QDialog *>();
        for (QDialog *one : all)
            one->reject();
        QTRY_VERIFY(!m_window->findChild<QDialog *>());
    }
    static QString stateOf(const LoadDialog &dialog) { return dialog.findChild<QLabel *>(text("loadState"))->text(); }
    static QCheckBox *acquiresAgain(const LoadDialog &dialog)
    {
        return dialog.findChild<QCheckBox *>(text("acquiresAgain"));
    }
    SimulatedDevice &camera() const { return *static_cast<SimulatedDevice *>(m_host.device("SIM-AREA-01")); }

    TestHost m_host;
    std::unique_ptr<ViewerWindow> m_window;
    std::unique_ptr<TourStage> m_stage;
    QTemporaryDir m_folder;
    QString m_file;
    QString m_error;
};

QTEST_MAIN(tst_ViewerSettings)
#include "tst_ViewerSettings.moc"
