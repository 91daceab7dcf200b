// SPDX-License-Identifier: MIT
#include <QAction>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

#include "Tools/Place.h"
#include "Viewer/ViewerWindow.h"
#include "Viewer/WriteLogDock.h"
#include "host/TestHost.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"

namespace {

constexpr const char *Camera = "SIM-AREA-01";

/// One write, and its entry in the log as an assignment.
struct Deed
{
    const char *name;
    bool (*act)(TourStage &stage);
    const char *entry;
    const char *refusal = ""; ///< a part of it
};

constexpr int PagesTab = 0;
constexpr int TreeTab = 1;

bool inTree(TourStage &stage, const char *feature, const char *typed)
{
    return stage.panel().openTab(TreeTab) && stage.tree().edit(text(feature), text(typed));
}

bool runInTree(TourStage &stage, const char *command)
{
    auto *button = qobject_cast<QPushButton *>(stage.tree().openEditor(text(command)));
    if (button)
        TourHand::click(button);
    TourHand::pause(100);
    return button;
}

TourPage &onPage(TourStage &stage, int page)
{
    stage.panel().openTab(PagesTab);
    stage.page().open(page);
    return stage.page();
}

/// As the panel does it. Nobody minds a refusal.
bool byName(const char *feature, const char *value)
{
    HostCore::SetCameraNodeValue(Camera, feature, value);
    return true;
}

const Deed Deeds[] = {
    {"integer", [](TourStage &at) { return inTree(at, "Width", "640"); }, "Width=640"},
    {"refused", [](TourStage &at) { return inTree(at, "Width", "645"); }, "Width=645", "The difference between Value"},
    {"float", [](TourStage &at) { return inTree(at, "ExposureTime", "2500.5"); }, "ExposureTime=2500.5"},
    {"entry", [](TourStage &at) { return inTree(at, "TriggerMode", "On"); },
     "TriggerMode[TriggerSelector=FrameStart]=On"},
    {"boolean", [](TourStage &at) { return inTree(at, "ReverseX", "True"); }, "ReverseX=1"},
    {"text", [](TourStage &at) { return inTree(at, "DeviceUserID", "it's"); }, "DeviceUserID=it's"},
    {"command", [](TourStage &at) { return runInTree(at, "TimestampLatch"); }, "TimestampLatch="},
    {"page: float", [](TourStage &at) { return onPage(at, 0).enter(text("Exposure Time(us)"), text("3000.1")); },
     "ExposureTime=3000.1"},
    {"page: entry", [](TourStage &at) { return onPage(at, 0).choose(text("Gain Auto"), text("Continuous")); },
     "GainAuto=Continuous"},
    {"page: switch", [](TourStage &at) { return onPage(at, 2).press(text("ReverseY")); }, "ReverseY=1"},
    {"page: integer", [](TourStage &at) { return onPage(at, 2).enter(text("Height"), text("1024")); }, "Height=1024"},
    {"page: by name", [](TourStage &at) { return onPage(at, 2).press(text("UserSetLoad")); }, "UserSetLoad="},
    {"by name", [](TourStage &) { return byName("ReverseX", "False"); }, "ReverseX=0"},
    {"by number", [](TourStage &) { return byName("TriggerMode", "0"); },
     "TriggerMode[TriggerSelector=FrameStart]=Off"},
    {"by name: refused", [](TourStage &) { return byName("Height", "7"); }, "Height=7", "Value = 7 must be"},
    {"no such feature", [](TourStage &) { return byName("Weight", "7"); }, "Weight=7", "There is no feature 'Weight'"},
};

} // namespace

/// What a person writes in the viewer, its log, and the script of that.
class tst_WriteLogDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_host.renewSimulated();
        m_host->infoItems().setParameter(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, text("2"));
        m_window = std::make_unique<ViewerWindow>(*m_host);
        m_dock = m_window->findChild<WriteLogDock *>();
        m_view = m_dock->findChild<QTableView *>();
        m_window->show();
        m_stage = std::make_unique<TourStage>(*m_window);
        m_window->openWhenKnown(text(Camera));
        QTRY_VERIFY(m_stage->tree().view() && m_stage->tree().view()->model());
    }

    void cleanupTestCase()
    {
        m_stage.reset();
        m_window.reset();
        m_host.end();
    }

    void isClosedUntilItIsWanted()
    {
        QVERIFY(!m_dock->isVisible());
        m_dock->toggleViewAction()->trigger();
        QTRY_VERIFY(!m_view->visibleRegion().isEmpty()); // in front of the log, whose place it shares
    }

    void listsEachWriteOnce()
    {
        m_host->writeLog().clear();
        for (const Deed &deed : Deeds) {
            const std::size_t before = m_host->writeLog().entries().size();
            QVERIFY2(deed.act(*m_stage), deed.name);
            QTRY_VERIFY2(m_host->writeLog().entries().size() > before, deed.name);
            const WriteLog::Entry &entry = m_host->writeLog().entries().back();
            const Persistence::Entry &setting = entry.setting;
            const std::string assignment = placeText(setting.feature, setting.selection) + '=' + setting.value;
            QVERIFY2(assignment == deed.entry, (deed.name + (": " + assignment)).c_str());
            QVERIFY2(entry.isRefused() == (*deed.refusal != '\0') && entry.refusal.contains(text(deed.refusal)),
                     qPrintable(entry.refusal));
            QCOMPARE(entry.device, text(Camera));
        }
        TourHand::pause(100);
        QCOMPARE(m_host->writeLog().entries().size(), std::size(Deeds));
        QCOMPARE(m_view->model()->rowCount(), int(std::size(Deeds)));
    }

    void searches()
    {
        auto *search = m_dock->findChild<QLineEdit *>();
        const std::pair<const char *, int> rows[] = {{"width", 2}, {"ContinuouS", 1}, {"no feature", 1}, {"OK", 13}};
        for (const auto &[typed, found] : rows) {
            search->setText(text(typed));
            QVERIFY2(m_view->model()->rowCount() == found, typed);
        }
        search->clear();
    }

    /// The command line takes every word of the script as it stands.
    void theScriptDoesItAgain()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(text("writes.sh"));
        QString error;
        QVERIFY2(m_dock->saveScript(path, &error), qPrintable(error));
        QVERIFY(QFileInfo(path).isExecutable());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArrayList lines = file.readAll().split('\n');
        for (const Deed &deed : Deeds) {
            const auto isOf = [&](const QByteArray &line) {
                const bool isComment = line.startsWith('#');
                return isComment == (*deed.refusal != '\0') && line.contains(shellWord(deed.entry));
            };
            QVERIFY2(std::any_of(lines.begin(), lines.end(), isOf), deed.entry);
        }
#ifdef PROGRAM
        QProcess shell;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("PATH"), QFileInfo(text(PROGRAM)).path() + text(":") + environment.value(text("PATH")));
        shell.setProcessEnvironment(environment);
        shell.start(path, QStringList());
        QVERIFY(shell.waitForFinished(60'000));
        QCOMPARE(shell.readAllStandardError(), QByteArray());
        QCOMPARE(shell.exitCode(), 0);
#endif
        QVERIFY(!m_dock->saveText(folder.filePath(text("no/folder.txt")), &error));
        QVERIFY(!error.isEmpty());
    }

    void isClearedAndForgetsTheOldest()
    {
        m_dock->findChild<QPushButton *>(text("writeLogClear"))->click();
        QCOMPARE(m_view->model()->rowCount(), 0);
        for (int number = 0; number <= 10'000; ++number)
            m_host->writeLog().append(text(Camera), {"Width", {}, std::to_string(number)});
        QCOMPARE(m_view->model()->rowCount(), 10'000);
        QCOMPARE(m_view->model()->index(0, 3).data().toString(), text("1"));
        QCOMPARE(m_view->model()->index(9'999, 3).data().toString(), text("10000"));
    }

private:
    TestHost m_host;
    std::unique_ptr<ViewerWindow> m_window;
    std::unique_ptr<TourStage> m_stage;
    WriteLogDock *m_dock = nullptr;
    QTableView *m_view = nullptr;
};

QTEST_MAIN(tst_WriteLogDock)
#include "tst_WriteLogDock.moc"
