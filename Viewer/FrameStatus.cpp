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
    connect(&view, &ImageView::statusChanged, this, &FrameStatus::refresh);
}

void FrameStatus::setPixelFormat(const QString &name)
{
    m_pixelFormat = name;
    refresh();
}

void FrameStatus::refresh()
{
    const bool shown = !m_view.imageSize().isEmpty();
    const double rate = m_view.framesPerSecond();
    const QSize size = m_view.imageSize();
    const QString texts[FieldCount] = {
        m_view.pixelText(),
        QStringLiteral("%1 \u00d7 %2").arg(size.width()).arg(size.height()),
        m_pixelFormat,
        rate > 0 ? tr("%1 fps").arg(locale().toString(rate, 'f', 1)) : QString(),
        tr("%1 %").arg(locale().toString(m_view.zoom() * 100, 'f', 0)),
    };
    for (int field = 0; field < FieldCount; ++field) {
        m_labels[field]->setText(shown ? texts[field] : QString());
        m_labels[field]->setVisible(!m_labels[field]->text().isEmpty());
    }
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
