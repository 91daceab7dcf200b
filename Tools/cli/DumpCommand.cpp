// SPDX-License-Identifier: MIT
#include <map>
#include <set>

#include <QJsonArray>

#include "Features/NodeGuard.h"
#include "Tools/cli/Places.h"
#include "Tools/cli/Records.h"
#include "Tools/cli/Stored.h"

namespace {

/// A feature below Root, where it stands first.
struct Feature
{
    std::string path; ///< of categories
    GenApi::IValue *value;
};

class FeatureWalk
{
public:
    explicit FeatureWalk(GenApi::INodeMap &map) { visit(GenApi::CCategoryPtr(map.GetNode("Root")), {}); }

    const std::vector<Feature> &features() const { return m_features; }

private:
    void visit(const GenApi::CCategoryPtr &category, const std::string &path)
    {
        GenApi::FeatureList_t inside;
        if (category.IsValid())
            category->GetFeatures(inside);
        for (GenApi::IValue *value : inside) {
            if (!m_known.insert(value->GetNode()).second)
                continue;
            const GenApi::CCategoryPtr below = value;
            if (below.IsValid())
                visit(below, path + value->GetNode()->GetName().c_str() + "/");
            else
                m_features.push_back({path, value});
        }
    }

    std::set<GenApi::INode *> m_known;
    std::vector<Feature> m_features;
};

QString typeText(GenApi::EInterfaceType type)
{
    switch (type) {
    case GenApi::intfIInteger:
        return QStringLiteral("Integer");
    case GenApi::intfIBoolean:
        return QStringLiteral("Boolean");
    case GenApi::intfICommand:
        return QStringLiteral("Command");
    case GenApi::intfIFloat:
        return QStringLiteral("Float");
    case GenApi::intfIString:
        return QStringLiteral("String");
    case GenApi::intfIRegister:
        return QStringLiteral("Register");
    case GenApi::intfIEnumeration:
        return QStringLiteral("Enumeration");
    default:
        return QStringLiteral("Other");
    }
}

QString accessText(GenApi::EAccessMode mode)
{
    switch (mode) {
    case GenApi::NI:
        return QStringLiteral("NI");
    case GenApi::NA:
        return QStringLiteral("NA");
    case GenApi::WO:
        return QStringLiteral("WO");
    case GenApi::RO:
        return QStringLiteral("RO");
    case GenApi::RW:
        return QStringLiteral("RW");
    default:
        return QStringLiteral("?");
    }
}

QString visibilityText(GenApi::EVisibility visibility)
{
    switch (visibility) {
    case GenApi::Beginner:
        return QStringLiteral("Beginner");
    case GenApi::Expert:
        return QStringLiteral("Expert");
    case GenApi::Guru:
        return QStringLiteral("Guru");
    default:
        return QStringLiteral("Invisible");
    }
}

/// A value in one cell of a line.
QString cellText(const std::string &value)
{
    QString text = textOfBytes(value);
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    text.replace(QLatin1Char('\t'), QStringLiteral("\\t"));
    text.replace(QLatin1Char('\r'), QStringLiteral("\\r"));
    return text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
}

class Dump
{
public:
    Dump(OpenDevice &device, Task &task, const Persistence::Settings &stored) : m_device(device), m_task(task)
    {
        for (const Persistence::Entry &entry : stored.entries) {
            std::vector<Persistence::Entry> &known = m_stored[entry.feature];
            if (!entry.selection.empty() || known.empty())
                known.push_back(entry);
        }
    }

    void run()
    {
        const FeatureWalk walk(m_device.map());
        for (const Feature &feature : walk.features()) {
            if (!m_device.goesOn())
                return;
            QString ignored;
            guarded(&ignored, [&] { add(feature); });
        }
        m_task.output.add({{QStringLiteral("device"), m_device.id()}, {QStringLiteral("features"), m_records}});
    }

private:
    void add(const Feature &feature)
    {
        GenApi::INode &node = *feature.value->GetNode();
        const QString type = typeText(node.GetPrincipalInterfaceType());
        const GenApi::EAccessMode mode = feature.value->GetAccessMode();
        for (const Persistence::Entry &entry : entriesOf(node.GetName().c_str(), mode)) {
            const QString path = textOfBytes(feature.path);
            const QString visibility = visibilityText(node.GetVisibility());
            if (!m_task.output.isJson()) {
                m_task.output.line(
                    QStringList{path + placeOf(entry), type, accessText(mode), visibility, cellText(entry.value)}.join(
                        QLatin1Char('\t')));
                continue;
            }
            QJsonObject record = recordOf(entry);
            record.insert(QStringLiteral("path"), path + textOfBytes(entry.feature));
            record.insert(QStringLiteral("type"), type);
            record.insert(QStringLiteral("access"), accessText(mode));
            record.insert(QStringLiteral("visibility"), visibility);
            m_records.append(record);
        }
    }

    /// A feature at all its positions, or once with the value that it has now, if that is wanted.
    std::vector<Persistence::Entry> entriesOf(const std::string &name, GenApi::EAccessMode mode)
    {
        const auto stored = m_stored.find(name);
        if (stored != m_stored.end())
            return stored->second;
        Persistence::Entry entry{name, {}, {}};
        const bool isWanted = mode == GenApi::RW || (mode == GenApi::RO && m_task.options.withReadings);
        if (isWanted) {
            Persistence::SelectorGuard guard(m_device.map());
            entry.value = Persistence::readEntry(m_device.map(), entry, guard).found;
        }
        return {entry};
    }

    OpenDevice &m_device;
    Task &m_task;
    QJsonArray m_records;
    std::map<std::string, std::vector<Persistence::Entry>> m_stored; // by feature
};

} // namespace

ExitCode dumpFeatures(OpenDevice &device, Task &task)
{
    ExitCode code = Done;
    const std::optional<Persistence::Settings> stored = storedOf(device, &code, task);
    if (!stored)
        return code;
    Dump(device, task, *stored).run();
    return device.goesOn() ? code : endOf(device, task);
}
