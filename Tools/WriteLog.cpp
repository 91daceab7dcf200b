// SPDX-License-Identifier: MIT
#include "Tools/WriteLog.h"

#include <algorithm>

#include "Tools/BytesText.h"
#include "Tools/Place.h"

namespace {

constexpr int MostBytesOfCommand = 60000;
constexpr int MostBytesOfWord = 120000; // the system takes no longer argument

bool isPlain(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')
        || (c != '\0' && QByteArray("_-+=./:,@%").contains(c));
}

bool isControl(char c)
{
    return (c >= 0 && c < ' ') || c == '\x7f';
}

QByteArray escapedForDollar(char c)
{
    if (c == '\'' || c == '\\')
        return QByteArray("\\") + c;
    const bool isAscii = c >= ' ' && c < '\x7f';
    return isAscii ? QByteArray(1, c) : "\\x" + QByteArray(1, c).toHex();
}

/// Every byte in its own right, on one line.
QByteArray dollarQuoted(const QByteArray &bytes)
{
    QByteArray quoted = "$'";
    for (char c : bytes)
        quoted += escapedForDollar(c);
    return quoted + "'";
}

QByteArray assignment(const WriteLog::Entry &entry)
{
    const std::string place = placeText(entry.setting.feature, entry.setting.selection);
    return shellWord(QByteArray::fromStdString(place + "=" + entry.setting.value));
}

QString inOneLine(const QString &text)
{
    QString line;
    for (QChar c : text)
        line += c < QLatin1Char(' ') ? QLatin1Char(' ') : c;
    return line;
}

/// Writes the commands of a script: one for writes to the same device in a row, which keeps the device open between
/// them.
class Script
{
public:
    void add(const WriteLog::Entry &entry)
    {
        const QByteArray word = assignment(entry);
        const char *const end = entry.device.startsWith(QLatin1Char('-')) ? "-- " : ""; // of options
        const QByteArray head = "paramter set " + (end + shellWord(entry.device.toUtf8()));
        if (entry.isRefused())
            comment("refused: " + inOneLine(entry.refusal).toUtf8(), head + ' ' + word);
        else if (word.size() > MostBytesOfWord)
            comment("too long for a command line", head + ' ' + word);
        else
            addWord(head, word);
    }
    QByteArray text()
    {
        endCommand();
        return m_text;
    }

private:
    void addWord(const QByteArray &head, const QByteArray &word)
    {
        if (m_command != head || m_commandSize + word.size() > MostBytesOfCommand) {
            endCommand();
            m_text += head;
            m_command = head;
            m_text += ' ' + word;
        } else {
            m_text += " \\\n    " + word;
        }
        m_commandSize += word.size();
    }
    void comment(const QByteArray &reason, const QByteArray &command)
    {
        endCommand();
        m_text += "# " + reason + "\n#   " + command + '\n';
    }
    void endCommand()
    {
        m_text += m_command.isEmpty() ? "" : "\n";
        m_command.clear();
        m_commandSize = 0;
    }

    QByteArray m_text;
    QByteArray m_command; // the one that is being written, as far as its device
    int m_commandSize = 0;
};

} // namespace

QByteArray shellWord(const QByteArray &bytes)
{
    if (!bytes.isEmpty() && std::all_of(bytes.begin(), bytes.end(), isPlain))
        return bytes;
    const bool isText = QString::fromUtf8(bytes).toUtf8() == bytes;
    if (!isText || std::any_of(bytes.begin(), bytes.end(), isControl))
        return dollarQuoted(bytes);
    QByteArray quoted = bytes;
    quoted.replace('\'', "'\\''");
    return '\'' + quoted + '\'';
}

WriteLog::WriteLog(std::size_t mostEntries, QObject *parent) : QObject(parent), m_mostEntries(mostEntries) { }

void WriteLog::append(const Entry &entry)
{
    m_entries.push_back(entry);
    const bool isFirstForgotten = m_entries.size() > m_mostEntries;
    if (isFirstForgotten) {
        m_entries.pop_front();
        ++m_forgotten;
    }
    Q_EMIT appended(isFirstForgotten);
}

void WriteLog::append(const QString &device, const Persistence::Entry &setting, const QString &refusal)
{
    append({QDateTime::currentDateTime(), device, setting, refusal});
}

void WriteLog::clear()
{
    m_entries.clear();
    m_forgotten = 0;
    Q_EMIT cleared();
}

QString WriteLog::text() const
{
    QString text;
    if (m_forgotten)
        text += QStringLiteral("# %1 older writes are left out\n").arg(m_forgotten);
    for (const Entry &entry : m_entries) {
        const QString place = textOfBytes(placeText(entry.setting.feature, entry.setting.selection));
        const QStringList cells{entry.time.toString(Qt::ISODateWithMs), entry.device, place,
                                textOfBytes(entry.setting.value), entry.result()};
        QStringList lines;
        for (const QString &cell : cells)
            lines += inOneLine(cell);
        text += lines.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

QByteArray WriteLog::script() const
{
    QByteArray head =
        "#!/usr/bin/env bash\n# Does the recorded writes again, as far as the first that is refused.\nset -e\n";
    if (m_forgotten)
        head += "# " + QByteArray::number(qulonglong(m_forgotten)) + " older writes are left out.\n";
    Script commands;
    for (const Entry &entry : m_entries)
        commands.add(entry);
    return head + commands.text();
}
