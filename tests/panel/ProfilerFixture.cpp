// SPDX-License-Identifier: MIT
#include "ProfilerFixture.h"

void ProfilerFixture::open(const QStringList &known, const CuratedFeatures &changes)
{
    m_panel.reset();
    m_log.clear();
    m_selected.clear();
    CuratedFeatures features = profilerFeatures();
    features.insert(features.end(), changes.begin(), changes.end());
    m_panel = std::make_unique<CuratedPanel>(features, PageSet::Profiler, [&](CuratedPanel &panel) {
        know(known);
        panel.host.setCallHook([&](const QString &call) {
            log(call);
            if (call.endsWith("TriggerMode)"_s))
                answer("TriggerMode"_s,
                       std::to_string(panel.camera.port.peek(panel.camera.address("TriggerSelector"))));
            else if (call.endsWith("ImageMask)"_s))
                answer("ImageMask"_s, panel.host.nodeValue("cam", "ImageMaskerSelector"));
        });
        panel.camera.watchWrites([this](const std::string &feature, uint64_t value) {
            m_log << "%1=%2"_s.arg(QString::fromStdString(feature)).arg(value);
        });
        panel.camera.port.pokeDouble(panel.camera.address("ZCoorScale"), 1.25);
    });
}

void ProfilerFixture::know(const QStringList &known)
{
    FakeHostCore &host = FakeHostCore::instance();
    for (const QString &pair : known) {
        const QString name = pair.section(QLatin1Char('='), 0, 0);
        const std::string text = pair.section(QLatin1Char('='), 1).toStdString();
        m_selected[name] = text;
        host.setNodeValue("cam", name.toStdString(), text);
        host.setCameraInfo("cam", name.toInt(), text);
    }
}

void ProfilerFixture::log(const QString &call)
{
    if (call.startsWith("GetAttrNodeMap"_s) || call.startsWith("VLogInfo"_s))
        return;
    QString line = call;
    for (const auto &[name, word] : {std::pair("SetCameraNodeValue", "Set"), std::pair("GetCameraNodeValue", "Get"),
                                     std::pair("SetCameraInfo", "Store"), std::pair("GetCameraInfo", "Recall"),
                                     std::pair("cam, ", ""), std::pair(", ", ",")})
        line.replace(QLatin1String(name), QLatin1String(word));
    m_log << line;
}

void ProfilerFixture::answer(const QString &feature, const std::string &selected)
{
    const auto found = m_selected.constFind(feature + QLatin1Char('@') + QString::fromStdString(selected));
    FakeHostCore &host = FakeHostCore::instance();
    host.setNodeValue("cam", feature.toStdString(), found == m_selected.constEnd() ? std::string() : *found);
}

void ProfilerFixture::enter(const char *row)
{
    auto *const field = editor<QDoubleSpinBox>(row);
    m_panel->panel->show();
    QTabWidget *const tabs = m_panel->innerTabs();
    while (!tabs->currentWidget()->isAncestorOf(field))
        tabs->setCurrentIndex((tabs->currentIndex() + 1) % tabs->count());
    QVERIFY(QTest::qWaitForWindowActive(m_panel->panel.get()));
    field->setFocus();
    QVERIFY(field->hasFocus());
    field->selectAll();
    m_log.clear();
}

QString ProfilerFixture::shown(const char *row) const
{
    if (const auto *list = editor<QComboBox>(row))
        return list->currentText();
    if (const auto *button = editor<SwitchButton>(row))
        return button->isOn() ? "on"_s : "off"_s;
    return QString::number(value(row));
}

QStringList ProfilerFixture::asShown(const QStringList &controls) const
{
    QStringList shownNow;
    for (const QString &control : controls) {
        const QString label = control.section(QLatin1Char('='), 0, 0);
        shownNow << label + QLatin1Char('=') + shown(label.toLatin1().constData());
    }
    return shownNow;
}
