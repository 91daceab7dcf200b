// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QVariant>

#include <GenApi/GenApi.h>

/// How the values of one kind of feature are read, written, refreshed and put into text, in the panel and beside it.
/// All functions pass on what the node throws, and throw a GenICam exception for a node without the interface that its
/// type names.
struct ValueKind
{
    GenApi::EInterfaceType type;
    /// Whether a value that was read can be written back after a refused write.
    bool isRestorable;
    /// The value from the cache if it is there: qint64, bool, double, UTF-8 text, the symbolic name of an enumeration's
    /// current entry. Invalid for kinds without value and for an enumeration without current entry.
    QVariant (*read)(GenApi::INode *node);
    /// Writes the value; false if there was nothing to write: a kind without value, or a text that is no entry of the
    /// enumeration. Verified, except for floats, which the device itself checks and which go out in single precision.
    bool (*write)(GenApi::INode *node, const QVariant &value);
    /// The value from the device, past the node cache, and verified. Of an enumeration it is only refreshed, for
    /// read().
    QVariant (*readFresh)(GenApi::INode *node);
    /// "True" or "False" for booleans, else the standard's text of the value.
    QString (*text)(GenApi::INode *node);
    /// Writes the value from text, verified. Booleans take "1", "0", "True" and "False"; enumerations the symbolic
    /// name or the number of an entry; an empty text executes a command.
    void (*writeText)(GenApi::INode *node, const QString &text);
};

/// The kind for the node's principal interface type; one without value for types that have none. Throws for null.
const ValueKind &valueKind(GenApi::INode *node);

/// The symbolic names of the entries that an enumeration can have now, in the node's order.
QStringList entryNames(GenApi::IEnumeration &enumeration);
