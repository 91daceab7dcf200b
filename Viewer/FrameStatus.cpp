// SPDX-License-Identifier: MIT
#include "Viewer/FrameStatus.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QStringList>

#include "Viewer/ImageView.h"

FrameStatus::FrameStatus(const ImageView &view, QWidget *parent) : QWidget(parent), m_view(view)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 8, 0);
    layout->setSpacing(18);
    for (QLabel *&label : m_labels) {
        label = new QLabel(this);
        layout->addWidget(label);
    }
    m_labels[FaultField]->setObjectName(QStringLiteral("frameFaults"));
    connect(&view, &ImageView::statusChanged, this, &FrameStatus::refresh);
}

void FrameStatus::setPixelFormat(const QString &name)
{
    m_pixelFormat = name;
    refresh();
}

void FrameStatus::setFrameCounts(const FrameCounts &counts)
{
    m_counts = counts;
    refresh();
}

QString FrameStatus::faultText() const
{
    QStringList texts;
    if (m_counts.lost > 0)
        texts << tr("%1 lost").arg(locale().toString(m_counts.lost));
    if (m_counts.incomplete > 0)
        texts << tr("%1 incomplete").arg(locale().toString(m_counts.incomplete));
    if (m_counts.tooLarge > 0)
        texts << tr("%1 too large").arg(locale().toString(m_counts.tooLarge));
    return texts.join(QStringLiteral(", "));
}

QString FrameStatus::faultTip() const
{
    return tr("Frames of this acquisition that are not shown, beside %1 good ones.\n"
              "Lost: the camera sent them, nothing of them came.\n"
              "Incomplete: only some of their packets came, or not in time.\n"
              "Too large: the camera sent more than it had announced; the acquisition starts anew with the new size.")
        .arg(locale().toString(m_counts.good));
}

void FrameStatus::refresh()
{
    const bool shown = !m_view.imageSize().isEmpty();
    const double rate = m_view.framesPerSecond();
    const QSize size = m_view.imageSize();
    const QString texts[FieldCount] = {
        m_view.pixelText(), QStringLiteral("%1 \u00d7 %2").arg(size.width()).arg(size.height()),
        m_pixelFormat,      rate > 0 ? tr("%1 fps").arg(locale().toString(rate, 'f', 1)) : QString(),
        faultText(),        tr("%1 %").arg(locale().toString(m_view.zoom() * 100, 'f', 0)),
    };
    for (int field = 0; field < FieldCount; ++field) {
        m_labels[field]->setText(shown || field == FaultField ? texts[field] : QString());
        m_labels[field]->setVisible(!m_labels[field]->text().isEmpty());
    }
    m_labels[FaultField]->setToolTip(faultTip());
}

QString FrameStatus::text() const
{
    QStringList texts;
    for (const QLabel *label : m_labels) {
        if (!label->text().isEmpty())
            texts << label->text();
    }
    return texts.join(QStringLiteral("  "));
}

void FrameStatus::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        refresh();
    QWidget::changeEvent(event);
}
