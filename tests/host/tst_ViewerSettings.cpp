// SPDX-License-Identifier: MIT
#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
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
        commands().save(m_file);
        QVERIFY2(m_stage->isLogged(text("were saved in")), qPrintable(m_host.log.join(QLatin1Char('\n'))));
        m_host.set("SIM-AREA-01", "ExposureTime=4321 Gain=3.5");
        QVERIFY(m_host.acquire("SIM-AREA-01"));
        const QSignalSpy written(&commands().settings(), &DeviceSettings::written);
        const ImportListener imports;
        LoadDialog *const dialog = plan(m_file);
        QVERIFY(dialog);
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
        QVERIFY(!again->findChild<QPushButton *>(text("qt_default"))); // not named
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
        QVERIFY(stateOf(*dialog).startsWith(text("1 settings written, 3 did not take")));
        QVERIFY(m_host.number("SIM-AREA-01", "Gain") != 5.0);
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
            box->buttons().at(goesOn ? 1 : 0)->click();
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
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(isRead ? head + row.content : row.content) >= 0);
            file.close();
            m_window->take(m_file);
            const auto *const box = m_window->findChild<QMessageBox *>();
            QCOMPARE(box != nullptr, !isRead);
            QVERIFY(!box || box->text().contains(text(row.message)));
            LoadDialog *const dialog = dialogOf<LoadDialog>();
            QCOMPARE(dialog != nullptr, isRead);
            QVERIFY(!dialog || dialog->findChild<QPlainTextEdit *>(text("fileProblems"))->toPlainText().contains(text("broken")));
            cleanupDialogs();
        }
    }

    void walksEndEarly()
    {
        commands().save(m_file);
        std::optional<Persistence::Settings> saved = SettingsFile::read(m_file, &m_error);
        const struct
        {
            const char *name;
            std::function<void(WalkDialog &)> interfere;
            const char *state;
            bool staysOpen;
        } rows[] = {
            {"cancelled", [](WalkDialog &walk) { walk.reject(); }, "Cancelled. ", true},
            {"lost", [this](WalkDialog &) { camera().setFault(SimulatedDevice::Fault::Drop); }, "The device was", false},
            {"closed", [this](WalkDialog &) { m_host->sessions().close(Camera); }, "The device was", false},
        };
        for (const auto &row : rows) {
            cleanup();
            init();
            LoadDialog *const dialog = plan(m_file, [](SettingsLoad &) {});
            tick(dialog->table(), {});
            Q_UNUSED(dialog)
            dialog->reject();
            Q_UNUSED(row)
        }
    }

private:
    using Entries = std::vector<std::pair<const char *, const char *>>;

    SettingsCommands &commands() const { return m_window->settingsCommands(); }
    SimulatedDevice &camera() const { return *static_cast<SimulatedDevice *>(m_host.device("SIM-AREA-01")); }

    TestHost m_host;
    std::unique_ptr<ViewerWindow> m_window;
    std::unique_ptr<TourStage> m_stage;
    QTemporaryDir m_folder;
    QString m_file;
};

QTEST_MAIN(tst_ViewerSettings)
#include "tst_ViewerSettings.moc"
