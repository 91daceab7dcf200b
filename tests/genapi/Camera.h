// SPDX-License-Identifier: MIT
#pragma once

#include "support/MemoryPort.h"

#include <GenApi/GenApi.h>
#include <GenApi/NodeMapFactory.h>

#include <algorithm>
#include <sstream>
#include <string>

/// A node map of a description written in a test, connected to a memory device.
class Camera
{
public:
    /// \param nodes the elements of the description; the port "Device" is added
    explicit Camera(const std::string &nodes)
    {
        const std::string text =
            "<RegisterDescription ModelName=\"Test\">" + nodes + "<Port Name=\"Device\"/></RegisterDescription>";
        GenApi::CNodeMapFactory factory(GenApi::ContentType_Xml, text.data(), text.size());
        map = factory.CreateNodeMap("camera");
        map->Connect(&port);
    }
    ~Camera() { GenApi::CastToIDestroy(map)->Destroy(); }
    Camera(const Camera &) = delete;
    Camera &operator=(const Camera &) = delete;

    GenApi::INode *node(const char *name) const { return map->GetNode(name); }
    GenApi::CIntegerPtr integer(const char *name) const { return node(name); }
    GenApi::CFloatPtr real(const char *name) const { return node(name); }
    GenApi::CBooleanPtr boolean(const char *name) const { return node(name); }
    GenApi::CEnumerationPtr enumeration(const char *name) const { return node(name); }
    GenApi::CStringPtr string(const char *name) const { return node(name); }
    GenApi::CCommandPtr command(const char *name) const { return node(name); }
    GenApi::CValuePtr value(const char *name) const { return node(name); }
    GenApi::EAccessMode access(const char *name) const { return node(name)->GetAccessMode(); }

    MemoryPort port;
    GenApi::INodeMap *map = nullptr;
};

/// An IntReg, little-endian and unsigned unless `more` says otherwise.
inline std::string intReg(const char *name, const char *address, const std::string &more = "", int length = 4,
                          const char *mode = "RW")
{
    const bool isBig = more.find("<Endianess>") != std::string::npos;
    return std::string("<IntReg Name=\"") + name + "\"><Address>" + address + "</Address><Length>"
        + std::to_string(length) + "</Length><AccessMode>" + mode + "</AccessMode><pPort>Device</pPort>"
        + (isBig ? "" : "<Endianess>LittleEndian</Endianess>") + more + "</IntReg>";
}

/// An Integer over an IntReg of the same name with "Reg" behind.
inline std::string integer(const char *name, const char *address, const std::string &more = "",
                           const std::string &ofRegister = "")
{
    const std::string registerName = std::string(name) + "Reg";
    return std::string("<Integer Name=\"") + name + "\"><pValue>" + registerName + "</pValue>" + more + "</Integer>"
        + intReg(registerName.c_str(), address, ofRegister);
}

/// Nodes in short, one a line: "Integer A; pValue=B; Max=9" is an Integer called A with these elements. What stands
/// behind a dot is the element's attribute: a name, of pIndex the offset, of indexed values the index.
inline std::string described(const std::string &nodes)
{
    std::istringstream lines(nodes);
    std::string xml;
    for (std::string line; std::getline(lines >> std::ws, line);) {
        const std::size_t space = line.find(' ');
        const std::string kind = line.substr(0, space);
        std::istringstream parts(line.substr(space + 1));
        std::string part;
        std::getline(parts, part, ';');
        xml += "<" + kind + " Name=\"" + part + "\">";
        while (std::getline(parts >> std::ws, part, ';')) {
            const std::size_t end = part.find('=');
            const std::size_t dot = part.substr(0, end).find('.');
            const std::string tag = part.substr(0, std::min(dot, end));
            const char *attribute = tag == "pIndex" ? "Offset" : tag.find("Indexed") != tag.npos ? "Index" : "Name";
            xml += "<" + tag;
            if (dot < end)
                xml += std::string(" ") + attribute + "=\"" + part.substr(dot + 1, end - dot - 1) + "\"";
            const std::string text = part.substr(end + 1);
            xml +=
                ">" + (text.find_first_of("<>&") == text.npos ? text : "<![CDATA[" + text + "]]>") + "</" + tag + ">";
        }
        xml += "</" + kind + ">";
    }
    return xml;
}

/// The description of the GenICam exception that the action throws, after its class; "" if it throws none.
template <class Action>
std::string thrownBy(Action action)
{
    const auto text = [](const char *kind, const GenICam::GenericException &e) {
        return std::string(kind) + ": " + e.GetDescription();
    };
    try {
        action();
    } catch (const GenICam::AccessException &e) {
        return text("Access", e);
    } catch (const GenICam::OutOfRangeException &e) {
        return text("OutOfRange", e);
    } catch (const GenICam::InvalidArgumentException &e) {
        return text("InvalidArgument", e);
    } catch (const GenICam::TimeoutException &e) {
        return text("Timeout", e);
    } catch (const GenICam::LogicalErrorException &e) {
        return text("LogicalError", e);
    } catch (const GenICam::RuntimeException &e) {
        return text("Runtime", e);
    } catch (const std::exception &e) {
        return std::string("std: ") + e.what();
    }
    return {};
}
