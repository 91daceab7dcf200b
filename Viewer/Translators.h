// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTranslator>

/// The translations of the viewer, of the panel and of Qt's own texts for one language at a time.
class Translators
{
public:
    /// Translates every text of the application from now on; `language` as in HostContext: "English" or
    /// "Chinese". Windows get QEvent::LanguageChange.
    void use(const QString &language);

private:
    void install(QTranslator &translator, const QString &catalogue, const QString &directory);

    QTranslator m_viewer;
    QTranslator m_panel;
    QTranslator m_qt;
};
