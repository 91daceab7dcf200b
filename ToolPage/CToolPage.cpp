// SPDX-License-Identifier: MIT
#include "ToolPage/CToolPage.h"

#include <algorithm>

#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPixmapCache>
#include <QPushButton>
#include <QSpacerItem>
#include <QVBoxLayout>

#include "PanelBase/StyleSheets.h"
#include "ToolPage/ToolPageWidget.h"

namespace {

/// Kept for all groups: each QIcon would leave further copies of the same image in Qt's cache.
QPixmap imageOf(QLatin1String file, const QSize &size, qreal ratio)
{
    const QString key = QStringLiteral("%1 %2x%3 %4").arg(file).arg(size.width()).arg(size.height()).arg(ratio);
    QPixmap image;
    if (QPixmapCache::find(key, &image))
        return image;
    image = QIcon(file).pixmap(size * ratio);
    if (image.isNull())
        return image;
    image = image.scaled(size * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image.setDevicePixelRatio(ratio);
    QPixmapCache::insert(key, image);
    return image;
}

} // namespace

CToolPage::CToolPage(QWidget *parent) : QWidget(parent)
{
    buildForm();
    buildTitleBar();
    setStretchEnable(false);
    showFoldIcon();
    connect(m_titleBar, &QPushButton::clicked, this, &CToolPage::onPushButtonFoldClicked);
}

void CToolPage::buildForm()
{
    setStyleSheet(StyleSheets::FoldableGroup);
    auto *grid = new QGridLayout(this);
    grid->setObjectName(QStringLiteral("gridLayout"));
    grid->setSpacing(0);
    grid->setContentsMargins(0, 0, 0, 0);
    auto *column = new QVBoxLayout;
    column->setObjectName(QStringLiteral("verticalLayout"));
    grid->addLayout(column, 0, 0);

    m_titleBar = new QPushButton(this);
    m_titleBar->setObjectName(QStringLiteral("pushButtonFold"));
    m_titleBar->setMinimumHeight(28);
    m_titleBar->setFocusPolicy(Qt::NoFocus);
    column->addWidget(m_titleBar);

    m_context = new QWidget(this);
    m_context->setObjectName(QStringLiteral("widgetContext"));
    m_context->setAttribute(Qt::WA_StyledBackground);
    column->addWidget(m_context);
    auto *contextGrid = new QGridLayout(m_context);
    contextGrid->setObjectName(QStringLiteral("gridLayout_2"));
    contextGrid->setSpacing(0);
    contextGrid->setContentsMargins(0, 0, 0, 0);
    m_contextLayout = new QVBoxLayout;
    m_contextLayout->setObjectName(QStringLiteral("verticalLayoutContext"));
    m_contextLayout->setSpacing(0);
    contextGrid->addLayout(m_contextLayout, 0, 0);

    m_spacer = new QSpacerItem(20, 40, QSizePolicy::Minimum, QSizePolicy::Expanding);
    column->addItem(m_spacer);
}

void CToolPage::buildTitleBar()
{
    m_foldIcon = new QLabel(m_titleBar);
    m_foldIcon->setFixedSize(20, 20);
    m_title = new QLabel(m_titleBar);
    auto *bar = new QHBoxLayout(m_titleBar);
    bar->setContentsMargins(0, 0, 5, 0);
    bar->addWidget(m_foldIcon);
    bar->addWidget(m_title);
    bar->addStretch(1);
}

void CToolPage::addWidget(const QString &englishTitle, const QString &chineseTitle, QWidget *content)
{
    setText(englishTitle);
    m_englishTitle = englishTitle;
    m_chineseTitle = chineseTitle;
    m_contextLayout->addWidget(content);
    m_contents.append(content);
    if (const auto *rows = qobject_cast<ToolPageWidget *>(content))
        connect(rows, &ToolPageWidget::emptyChanged, this, &CToolPage::adoptContents);
    expand();
    adoptContents();
}

void CToolPage::adoptContents()
{
    const bool isEmpty = std::all_of(m_contents.cbegin(), m_contents.cend(), [](const QWidget *content) {
        const auto *rows = qobject_cast<const ToolPageWidget *>(content);
        return rows && rows->isEmpty();
    });
    if (isEmpty == m_isEmpty)
        return;
    m_isEmpty = isEmpty;
    Q_EMIT emptyChanged(isEmpty);
}

void CToolPage::expand()
{
    setExpanded(true);
}

void CToolPage::collapse()
{
    setExpanded(false);
}

void CToolPage::setStretchEnable(bool enable)
{
    const QSizePolicy::Policy policy = enable ? QSizePolicy::Expanding : QSizePolicy::Minimum;
    const QSize size = enable ? QSize(20, 40) : QSize(0, 0);
    m_spacer->changeSize(size.width(), size.height(), policy, policy);
    layout()->invalidate();
}

void CToolPage::setAutoStretchEnable(bool enable)
{
    m_autoStretch = enable;
}

void CToolPage::updateWidget()
{
    if (m_context->isHidden() && !m_isEmpty)
        return;
    for (QWidget *content : std::as_const(m_contents)) {
        if (auto *page = qobject_cast<ToolPageWidget *>(content))
            page->updateWidget();
    }
}

void CToolPage::setText(const QString &title)
{
    m_title->setText(title);
    m_titleBar->setAccessibleName(title);
}

void CToolPage::setLanguage(int language)
{
    setText(language != 0 ? m_chineseTitle : m_englishTitle);
    for (QWidget *content : std::as_const(m_contents)) {
        if (auto *page = qobject_cast<ToolPageWidget *>(content))
            page->setLanguage(language);
    }
}

void CToolPage::onPushButtonFoldClicked()
{
    setExpanded(!m_expanded);
}

void CToolPage::setExpanded(bool expanded)
{
    if (m_autoStretch)
        setStretchEnable(!expanded);
    m_context->setVisible(expanded);
    m_expanded = expanded;
    showFoldIcon();
}

void CToolPage::showFoldIcon()
{
    const QLatin1String file = m_expanded ? Icons::Unfold : Icons::Fold;
    m_foldIcon->setPixmap(imageOf(file, m_foldIcon->size(), m_foldIcon->devicePixelRatioF()));
}
