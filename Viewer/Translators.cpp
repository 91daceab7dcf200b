// SPDX-License-Identifier: MIT
#include "Viewer/Translators.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace {

QString qtTranslations()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
}

} // namespace

void Translators::use(const QString &language)
{
    for (QTranslator *translator : {&m_viewer, &m_panel, &m_qt})
        QCoreApplication::removeTranslator(translator);
    if (language == QLatin1String("English"))
        return;
    install(m_qt, QStringLiteral("qtbase_zh_CN"), qtTranslations());
    install(m_panel, QStringLiteral("paramterwnd_zh_CN"), QStringLiteral(":/i18n"));
    install(m_viewer, QStringLiteral("viewer_zh_CN"), QStringLiteral(":/i18n"));
}

void Translators::install(QTranslator &translator, const QString &catalogue, const QString &directory)
{
    if (translator.load(catalogue, directory))
        QCoreApplication::installTranslator(&translator);
}
