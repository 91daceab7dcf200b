// SPDX-License-Identifier: MIT
#include "Tools/cli/Commands.h"

#include <limits>

namespace {

constexpr std::size_t Any = std::numeric_limits<std::size_t>::max();

} // namespace

const std::vector<Command> &commands()
{
    static const std::vector<Command> All = {
        {"list", "", "List the devices that are there: simulated ones and those on the network and the USB.",
         "  paramter list\n"
         "  paramter list --json\n",
         Command::Json, 0, 0, nullptr},
        {"dump", "DEVICE",
         "Print all features: path, type, access, visibility and value, separated by tabs. Values of what cannot be "
         "written are left out, so that devices with equal settings have equal dumps.",
         "  paramter dump SIM-AREA-01\n"
         "  paramter dump 192.168.1.20 --readings\n"
         "  paramter dump --genicam camera.xml\n",
         Command::Json | Command::Readings | Command::Devices, 0, 0, dumpFeatures},
        {"get", "DEVICE FEATURE...", "Print values of features as FEATURE=VALUE, which set takes.",
         "  paramter get SIM-AREA-01 Width Height\n"
         "  paramter get SIM-AREA-01 'Gain[GainSelector=All]'\n"
         "  width=$(paramter get -n SIM-AREA-01 Width)\n",
         Command::Json | Command::ValueOnly | Command::Devices, 1, Any, getFeatures},
        {"set", "DEVICE FEATURE=VALUE...",
         "Write features in this order and print what they are then. The first refusal ends it. A command is executed "
         "by an empty value.",
         "  paramter set SIM-AREA-01 Width=640 Height=480\n"
         "  paramter set SIM-AREA-01 TriggerSelector=FrameStart TriggerMode=On\n"
         "  paramter set SIM-AREA-01 'TriggerMode[TriggerSelector=FrameStart]=On'\n"
         "  paramter set SIM-AREA-01 UserSetLoad=\n",
         Command::Json | Command::Devices, 1, Any, setFeatures},
        {"save", "DEVICE FILE", "Save the settings of a device. - is the standard output.",
         "  paramter save 192.168.1.20 camera.txt\n"
         "  paramter save --all-of 'Area Scan' 'camera-{id}.txt'\n",
         Command::Devices | Command::FilePerDevice, 1, 1, saveSettings},
        {"load", "DEVICE FILE",
         "Load the settings of a file, verify them, and tell what did not take. - is the standard input.",
         "  paramter load 192.168.1.20 camera.txt --dry-run\n"
         "  paramter load --all-of 'Area Scan' camera.txt\n",
         Command::Json | Command::DryRun | Command::AnyModel | Command::WriteAll | Command::Devices, 1, 1,
         loadSettings},
        {"compare", "A B", "Compare the settings of files or devices. The exit code is 1 when they differ.",
         "  paramter compare camera.txt SIM-AREA-01\n"
         "  paramter compare 192.168.1.20 192.168.1.21 --json\n"
         "  paramter compare yesterday.txt today.txt\n",
         Command::Json | Command::ShowAll | Command::Devices, 2, 2, nullptr},
        {"xml", "DEVICE [FILE]", "Print or save the device's GenICam description.",
         "  paramter xml SIM-AREA-01 camera.xml\n", Command::Devices | Command::FilePerDevice, 0, 1, printDescription},
        {"watch", "DEVICE FEATURE...", "Print features whenever they change, until Ctrl-C.",
         "  paramter watch SIM-AREA-01 DeviceTemperature --interval 2\n"
         "  paramter watch SIM-AREA-01 Width --json --rounds 10\n"
         "  paramter watch --all-of 'Area Scan' DeviceTemperature\n",
         Command::Json | Command::Watching | Command::Devices, 1, Any, nullptr, watchFeatures},
    };
    return All;
}

QString fileFor(const OpenDevice &device, const std::string &pattern)
{
    QString id = device.id();
    id.replace(QLatin1Char('/'), QLatin1Char('_'));
    return QString::fromStdString(pattern).replace(QStringLiteral("{id}"), id);
}
