// SPDX-License-Identifier: MIT
#include <optional>
#include <utility>
#include <vector>

#include "Simulation/Behaviour.h"
#include "Simulation/Firmware.h"

namespace {

/// Saves and loads the registers that belong to user sets. Set 0 holds the power-up values; the others outlive a
/// restart of the device.
class UserSets : public Behaviour
{
public:
    explicit UserSets(QStringList setNames) : m_names(std::move(setNames)), m_sets(size_t(m_names.size())) { }

    void powerUp(Firmware &firmware) override
    {
        m_sets[0] = contents(firmware.memory());
        load(firmware, size_t(firmware.memory().integer("UserSetDefault")));
    }

    QString objection(const Firmware &firmware, const RegisterWrite &write) const override
    {
        const size_t chosen = selected(firmware);
        if (write.is("UserSetSave") && chosen == 0)
            return QStringLiteral("the user set Default is read-only");
        const bool load = write.is("UserSetLoad");
        const bool start = write.is("UserSetDefault");
        const size_t wanted = start ? size_t(write.value) : chosen;
        if ((load || start) && (wanted >= m_sets.size() || !m_sets[wanted]))
            return QStringLiteral("the user set %1 was never saved").arg(name(wanted));
        return {};
    }

    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        if (write.is("UserSetSave"))
            m_sets[selected(firmware)] = contents(firmware.memory());
        else if (write.is("UserSetLoad"))
            load(firmware, selected(firmware));
    }

private:
    static size_t selected(const Firmware &firmware) { return size_t(firmware.memory().integer("UserSetSelector")); }

    QString name(size_t set) const { return set < m_sets.size() ? m_names[int(set)] : QString::number(set); }

    static QByteArray contents(const RegisterMemory &memory)
    {
        QByteArray all;
        for (const Register &reg : memory.registers()) {
            if (reg.inUserSet)
                all += memory.bytes(reg);
        }
        return all;
    }

    void load(Firmware &firmware, size_t set)
    {
        if (set >= m_sets.size() || !m_sets[set])
            return;
        int place = 0;
        for (const Register &reg : firmware.memory().registers()) {
            if (!reg.inUserSet)
                continue;
            const int size = reg.length * reg.positions;
            firmware.memory().setBytes(reg, m_sets[set]->mid(place, size));
            place += size;
        }
    }

    const QStringList m_names;
    std::vector<std::optional<QByteArray>> m_sets;
};

} // namespace

void addUserSetBehaviours(Behaviours &behaviours, int first, int last)
{
    QStringList names(QStringLiteral("Default"));
    for (int number = first; number <= last; ++number)
        names << QStringLiteral("UserSet%1").arg(number);
    behaviours.push_back(std::make_unique<UserSets>(names));
}
