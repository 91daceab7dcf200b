// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// Camera descriptions to be opened, sound and broken ones, in a folder that the run leaves empty behind.
class SoakFiles
{
public:
    explicit SoakFiles(quint64 seed);
    ~SoakFiles();
    SoakFiles(const SoakFiles &) = delete;
    SoakFiles &operator=(const SoakFiles &) = delete;

    QString settings() const { return m_folder + QStringLiteral("/soak.ini"); }
    /// One of them does not exist.
    QStringList paths() const { return m_paths; }

private:
    void add(const char *name, const QByteArray &content);

    const QString m_folder; ///< named by the seed: paths are shown, and a replay shows the same
    QStringList m_paths;
};
