// SPDX-License-Identifier: MIT
#include "Viewer/ViewerStyle.h"

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

#include "Resources/LightPalette.h"

namespace {

constexpr char StyleSheet[] = "QToolBar { border: none; border-bottom: 1px solid #d8d8d8; padding: 3px; spacing: 2px; }"
                              "QMainWindow::separator { background: #e1e1e1; width: 4px; height: 4px; }"
                              "QDockWidget::title { background: #e1e1e1; padding: 6px 8px; }"
                              "QAbstractItemView { outline: 0; }"
                              "QStatusBar::item { border: none; }"
                              "QComboBox { combobox-popup: 0; }"
                              "#deviceTree::item { min-height: 28px; padding-left: 4px; }"
                              "#deviceTree QHeaderView::section, #logView QHeaderView::section,"
                              " #writeLogView QHeaderView::section, #settingsTable QHeaderView::section,"
                              " #producerTable QHeaderView::section {"
                              " background: #ececec; border: none; border-bottom: 1px solid #d8d8d8; padding: 4px; }"
                              "QScrollBar { background: #f0f0f0; border: none; }"
                              "QScrollBar:vertical { width: 12px; } QScrollBar:horizontal { height: 12px; }"
                              "QScrollBar::handle { background: #c4c5c6; border-radius: 4px; margin: 2px; }"
                              "QScrollBar::handle:hover { background: #a8a9ab; }"
                              "QScrollBar::handle:vertical { min-height: 28px; }"
                              "QScrollBar::handle:horizontal { min-width: 28px; }"
                              "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
                              "QScrollBar::add-page, QScrollBar::sub-page { background: none; }";

} // namespace

void enableHighDpi()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void applyViewerStyle(QApplication &application)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(LightPalette::palette());
    QFont font = QApplication::font();
    font.setFamilies({font.family(), QStringLiteral("Noto Sans CJK SC")});
    QApplication::setFont(font);
    application.setStyleSheet(QLatin1String(StyleSheet));
}
