// SPDX-License-Identifier: MIT
#pragma once

#include <deque>

#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QString>

#include <GenApi/PersistenceFile.h>

/// What was written to devices, by whom ever, in its order; as text and as a shell script that does it again. GUI
/// thread.
class WriteLog : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        QDateTime time;
        QString device; ///< its id
        /// The feature, where its selectors stood (empty if that is not known: they stand as the entries before have
        /// left them) and the value as text, in the device's own bytes. Commands have an empty value.
        Persistence::Entry setting;
        QString refusal; ///< the device's own words; empty for what was taken

        bool isRefused() const { return !refusal.isEmpty(); }
        QString result() const { return isRefused() ? refusal : QStringLiteral("ok"); }
    };

    /// With more than `mostEntries` the oldest are forgotten.
    explicit WriteLog(std::size_t mostEntries = 10000, QObject *parent = nullptr);

    void append(const Entry &entry);
    /// The same, now.
    void append(const QString &device, const Persistence::Entry &setting, const QString &refusal = {});
    void clear();

    const std::deque<Entry> &entries() const { return m_entries; }
    /// How many are forgotten.
    std::size_t forgotten() const { return m_forgotten; }

    /// A line for each write: time, device, feature with position, value, result, separated by tabs.
    QString text() const;
    /// A bash script of `paramter set` lines, which ends at the first that fails. What was refused is a comment.
    QByteArray script() const;

Q_SIGNALS:
    /// The last entry is new; the first one is forgotten if `isFirstForgotten`.
    void appended(bool isFirstForgotten);
    void cleared();

private:
    const std::size_t m_mostEntries;
    std::deque<Entry> m_entries;
    std::size_t m_forgotten = 0;
};

/// A word for bash that stands for these bytes, quoted if it needs to be.
QByteArray shellWord(const QByteArray &bytes);
