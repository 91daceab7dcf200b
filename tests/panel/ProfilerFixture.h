// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>

#include "CuratedPanel.h"

using Action = std::function<void()>;

/// Tests of a laser profiler's panel, with one log of what it does to the device and to the host.
///
/// Log lines: calls to the host, but for its log, without the device ("Set" and "Get" by feature name, "Store" and
/// "Recall" of its settings) and, as "feature=value", writes to the registers of the node map, all in one order.
class ProfilerFixture : public PanelFixture
{
protected:
    /// `known`: what the host answers, as "feature=text", "setting=text", "TriggerMode@entry=text" for a selected
    /// trigger, "ImageMask@entry=text" for a selected mask; ZCoorScale is 1.25.
    void open(const QStringList &known = {}, const CuratedFeatures &changes = {});
    /// Changes what the host answers from now on.
    void know(const QStringList &known);
    /// Gives the focus to the field of a row in a shown page; the log starts anew.
    void enter(const char *row);
    void type(const char *row, const char *text)
    {
        enter(row);
        QTest::keyClicks(editor<QDoubleSpinBox>(row), QString::fromLatin1(text));
    }
    void press(const char *row, Qt::Key key) { QTest::keyClick(editor<QDoubleSpinBox>(row), key); }
    double value(const char *row) const { return editor<QDoubleSpinBox>(row)->value(); }
    /// The entry, number or "on" that a row shows.
    QString shown(const char *row) const;
    /// "row=shown" for each "row=expected".
    QStringList asShown(const QStringList &controls) const;
    /// The log since the last call.
    QString taken() { return std::exchange(m_log, {}).join(QLatin1Char(' ')); }

    void log(const QString &call);

    QStringList m_log;

private:
    void answer(const QString &feature, const std::string &selected);

    QMap<QString, std::string> m_selected; ///< answers that depend on a selector
};
