// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QString>

/// What the last search has seen behind one producer, for people. Texts are empty where the producer does not tell.
struct ProducerReport
{
    struct SeenDevice
    {
        QString id;
        QString vendor;
        QString model;
        QString serial;
        QString transport;
        QString access; ///< whether it can be opened, in words
    };
    struct SeenInterface
    {
        QString id;
        QString name;
        QString transport;
        QString problem; ///< why it could not be searched
        std::vector<SeenDevice> devices;
    };

    QString file; ///< canonical, if it exists
    QString vendor;
    QString model;
    QString version;
    QString transport;
    QString problem; ///< why it is not used; a sentence
    std::vector<SeenInterface> interfaces;
};
