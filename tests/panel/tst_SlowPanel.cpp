// SPDX-License-Identifier: MIT
#include "CuratedPanel.h"
#include "support/Input.h"

namespace {

using namespace std::chrono_literals;

/// Far more than the budget of one turn of the event loop for all pages.
constexpr auto Latency = 4ms;

/// All shown rows, with what their editors show and permit.
QStringList state(const CuratedPanel &panel)
{
    QStringList lines;
    for (const QString &label : panel.labels()) {
        const QByteArray name = label.toUtf8();
        const QWidget *editor = nullptr;
        QString text;
        if (const auto *box = panel.editor<QAbstractSpinBox>(name)) {
            editor = box;
            text = box->text();
        } else if (const auto *list = panel.editor<QComboBox>(name)) {
            editor = list;
            text = list->currentText();
        } else if (const auto *button = panel.editor<SwitchButton>(name)) {
            editor = button;
            text = QString::number(button->isOn());
        }
        lines << label + QLatin1Char('=') + text + (editor && !editor->isEnabled() ? "-"_s : QString());
    }
    return lines;
}

void makeSlow(CuratedPanel &panel)
{
    panel.camera.port.latency = Latency;
}

} // namespace

/// The pages of a device that is slow, or silent.
class tst_SlowPanel : public PanelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_panel.reset(); }

    void pagesEndAsAtOnce()
    {
        const std::pair<const char *, PageSet> rows[] = {{"area-scan", PageSet::AreaScan},
                                                         {"profiler", PageSet::Profiler},
                                                         {"structured light", PageSet::StructuredLight}};
        for (const auto &[name, pageSet] : rows) {
            const InRow inRow(name);
            m_panel.reset();
            m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, pageSet);
            const QStringList expected = state(*m_panel);
            m_panel.reset();
            m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, pageSet, makeSlow);
            QVERIFY2(pageSet != PageSet::AreaScan || state(*m_panel).size() < expected.size(),
                     "rows are read in turns");
            QTRY_COMPARE(state(*m_panel), expected);
        }
    }

    /// What the user does comes before what waits, and is not undone by it.
    void editsComeFirst()
    {
        m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, PageSet::AreaScan, makeSlow);
        panel()->show();
        QTRY_VERIFY(editor<QSpinBox>("Width"));
        panel()->updateWidget(true);
        auto *const field = editor<QSpinBox>("Width");
        QVERIFY(activate(*panel()));
        m_panel->innerTabs()->setCurrentIndex(2);
        field->setFocus();
        field->selectAll();
        port().resetCounters();
        QTest::keyClicks(field, "640"_s);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(port().writes, 1u);
        QTRY_COMPARE(number("Width"), 640);
    }

    /// A closed device is not read any more, whatever waited.
    void nothingAfterClosing()
    {
        m_panel = std::make_unique<CuratedPanel>(CuratedFeatures{}, PageSet::AreaScan, makeSlow);
        panel()->setParamterViewDisable();
        port().resetCounters();
        QTest::qWait(50);
        QCOMPARE(port().reads, 0u);
    }

    /// The last values in gray, but for what is being typed; one line, no access; live again with the first answer.
    void silentDevice()
    {
        m_panel = std::make_unique<CuratedPanel>();
        QVERIFY(activate(*panel()));
        m_panel->innerTabs()->setCurrentIndex(2);
        const QStringList before = state(*m_panel);
        auto *const field = editor<QSpinBox>("Width");
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, "64"_s);
        m_panel->host.clearCalls();
        port().readFault = MemoryPort::Fault::Timeout;
        m_panel->camera.map->InvalidateNodes();
        m_panel->row("Height")->updateWidget(false);
        QTRY_VERIFY(!editor<QSpinBox>("OffsetX")->isEnabled());
        QVERIFY(!editor<QSpinBox>("Height")->isEnabled());
        QVERIFY(field->isEnabled());
        QCOMPARE(field->text(), "64"_s);
        QCOMPARE(told().size(), 1);
        m_panel->row("OffsetX")->updateWidget(false);
        port().readFault = MemoryPort::Fault::None;
        QTRY_VERIFY(editor<QSpinBox>("Height")->isEnabled());
        QCOMPARE(field->text(), "64"_s);
        QCOMPARE(told().size(), 2);
        QTest::keyClick(field, Qt::Key_Escape);
        QTRY_COMPARE(state(*m_panel), before);
    }
};

QTEST_MAIN(tst_SlowPanel)
#include "tst_SlowPanel.moc"
