// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QtTest>

#include "Features/NodeText.h"
#include "Simulation/SimulatedDevice.h"
#include "Simulation/SimulatedDevices.h"

/// A simulated device, opened for one test, with its features by name.
class OpenDevice
{
public:
    explicit OpenDevice(const char *id)
    {
        for (std::unique_ptr<Device> &candidate : makeSimulatedDevices()) {
            if (candidate->id() == QLatin1String(id))
                m_device.reset(static_cast<SimulatedDevice *>(candidate.release()));
        }
        QString error;
        if (!m_device || !m_device->open(&error))
            qFatal("%s does not open: %s", id, qPrintable(error));
    }

    SimulatedDevice *operator->() const { return m_device.get(); }
    /// Starts the acquisition, which must work.
    void start() const
    {
        QString error;
        if (!m_device->startAcquisition(&error))
            qFatal("%s", qPrintable(error));
    }
    GenApi::INodeMap &nodes() const { return *m_device->nodeMap(); }
    GenApi::INode *node(const char *name) const { return nodes().GetNode(name); }

    GenApi::CIntegerPtr integer(const char *name) const { return node(name); }
    GenApi::CFloatPtr number(const char *name) const { return node(name); }
    GenApi::CBooleanPtr boolean(const char *name) const { return node(name); }
    GenApi::CEnumerationPtr enumeration(const char *name) const { return node(name); }
    GenApi::CCommandPtr command(const char *name) const { return node(name); }
    GenApi::EAccessMode access(const char *name) const { return node(name)->GetAccessMode(); }

    QString text(const char *name) const
    {
        return QString::fromUtf8(GenApi::CValuePtr(node(name))->ToString(false, true).c_str());
    }
    /// Executes commands.
    void set(const char *name, const char *text) const
    {
        writeNodeText(nodes(), QLatin1String(name), QString::fromUtf8(text));
    }
    /// Sets features from words "name=text", one after the other.
    void setAll(const QByteArray &words) const
    {
        const QByteArray failure = failureOf(words);
        if (!failure.isEmpty())
            qFatal("%s", failure.constData());
    }

    /// What the device says when the feature is set to that text; empty when it accepts.
    QString refusal(const char *name, const char *text) const
    {
        try {
            set(name, text);
        } catch (const GenICam::GenericException &exception) {
            return QString::fromUtf8(exception.GetDescription());
        }
        return {};
    }

    /// Goes through words: "Feature=1" sets it, "Feature!=1" expects that the device refuses to, "Feature==1" expects
    /// the value and "Feature:RO" the access. Tells of the first word that does not hold; empty when all do.
    QByteArray failureOf(const QByteArray &words) const
    {
        static const QRegularExpression Form(QStringLiteral("^([^=!:]+)(==?|!=|:)(.*)$"));
        static const QByteArrayList Modes{"NI", "NA", "WO", "RO", "RW"};
        for (const QByteArray &word : words.split(' ')) {
            const QRegularExpressionMatch parts = Form.match(QString::fromUtf8(word));
            const QByteArray name = parts.captured(1).toUtf8(), wanted = parts.captured(3).toUtf8();
            const QByteArray sign = parts.captured(2).toUtf8();
            if (!node(name))
                return word + ": no such feature";
            QByteArray value = wanted;
            try {
                if (sign == ":")
                    value = Modes.at(access(name));
                else if (sign == "==")
                    value = GenApi::CValuePtr(node(name))->ToString(true).c_str();
                else
                    set(name, wanted);
                if (sign == "!=" || value != wanted)
                    return word + ": it is " + value;
            } catch (const GenICam::GenericException &exception) {
                if (sign != "!=")
                    return word + ": " + exception.GetDescription();
            }
        }
        return {};
    }

private:
    std::unique_ptr<SimulatedDevice> m_device;
};
