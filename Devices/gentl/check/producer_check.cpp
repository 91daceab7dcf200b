// SPDX-License-Identifier: MIT
// paramter-producer-check FILE: tries a GenTL producer and writes one line of JSON about it, after a line for each
// step. Whatever the producer does, it does to this process only.
#include <cstdio>
#include <unistd.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "Devices/gentl/Modules.h"

namespace {

constexpr std::chrono::milliseconds SearchTime(500); // of each interface
constexpr std::chrono::seconds MostTime(5); // of all; the rest is for those who use it

/// The producer may write to the standard output, too: it gets the other one.
int takeOutput()
{
    const int output = dup(STDOUT_FILENO);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    return output;
}

class Trial
{
public:
    explicit Trial(int output) : m_output(output) { }

    QJsonObject of(const QString &file) const
    {
        QJsonObject told;
        try {
            step("while it is loaded and initialised");
            const std::shared_ptr<Producer> producer = Producer::load(file);
            const Producer::Info &info = producer->info();
            told = {{QStringLiteral("vendor"), info.vendor},
                    {QStringLiteral("model"), info.model},
                    {QStringLiteral("version"), info.version},
                    {QStringLiteral("transport"), info.transport}};
            walk(producer);
            step("while it is closed");
        } catch (const std::exception &error) {
            told[QStringLiteral("problem")] = QString::fromUtf8(error.what());
        }
        return told;
    }

    void write(const QByteArray &line) const
    {
        const QByteArray bytes = line + '\n';
        if (::write(m_output, bytes.constData(), static_cast<std::size_t>(bytes.size())) != bytes.size())
            std::perror("paramter-producer-check");
    }

private:
    void step(const char *name) const { write(QByteArrayLiteral("step ") + name); }

    void walk(const std::shared_ptr<Producer> &producer) const
    {
        const auto begin = std::chrono::steady_clock::now();
        step("while it opens its system");
        const std::shared_ptr<SystemModule> system = SystemModule::open(producer);
        step("while it looks for interfaces");
        system->updateInterfaces(SearchTime);
        for (const QByteArray &id : system->interfaceIds()) {
            if (std::chrono::steady_clock::now() - begin > MostTime)
                return;
            step("while it looks for devices");
            look(*system, id);
        }
    }

    /// An interface that is refused is no reason not to use the others.
    static void look(SystemModule &system, const QByteArray &id)
    {
        try {
            const std::shared_ptr<InterfaceModule> interface = system.openInterface(id);
            interface->updateDevices(SearchTime);
            for (const QByteArray &device : interface->deviceIds())
                interface->deviceInfo(device);
        } catch (const GentlError &error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
    }

    const int m_output;
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: paramter-producer-check FILE\n");
        return 2;
    }
    const Trial trial(takeOutput());
    const QJsonObject told = trial.of(QString::fromLocal8Bit(argv[1]));
    trial.write(QJsonDocument(told).toJson(QJsonDocument::Compact));
    _exit(0); // what producers leave behind is not to spoil it
}
