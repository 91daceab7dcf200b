// SPDX-License-Identifier: MIT
#include "soak/SoakFiles.h"

#include <QDir>
#include <QFile>

namespace {

QByteArray contentOf(const char *resource)
{
    QFile file(QStringLiteral(":/simulation/") + QLatin1String(resource));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

SoakFiles::SoakFiles(quint64 seed) : m_folder(QDir::tempPath() + QStringLiteral("/paramter-soak-%1").arg(seed))
{
    QDir(m_folder).removeRecursively(); // of a run that died
    QDir().mkpath(m_folder);
    const QByteArray sound = contentOf("structured_light.xml");
    add("sound.xml", sound);
    add("card.xml", contentOf("card.xml"));
    add("cut.xml", sound.left(sound.size() / 2));
    add("changed.xml", QByteArray(sound).replace("<Length>4", "<Length>-4").replace("<pValue>", "<pMin>"));
    add("circle.xml",
        "<RegisterDescription><Category Name=\"Root\"><pFeature>A</pFeature></Category>"
        "<Integer Name=\"A\"><pValue>B</pValue></Integer><Integer Name=\"B\"><pValue>A</pValue></Integer>"
        "</RegisterDescription>");
    add("empty.xml", {});
    add("bytes.zip", "PK\3\4 no archive");
    m_paths << m_folder + QStringLiteral("/missing.xml") << m_folder;
}

SoakFiles::~SoakFiles()
{
    QDir(m_folder).removeRecursively();
}

void SoakFiles::add(const char *name, const QByteArray &content)
{
    QFile file(m_folder + QLatin1Char('/') + QLatin1String(name));
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size())
        m_paths << file.fileName();
}
