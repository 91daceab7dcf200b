// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QString>
#include <QWidget>

#include <GenApi/PersistenceFile.h>

class DeviceSettings;
class QComboBox;

/// One side of a comparison: an open device or a file, for the user to choose, and its settings.
class SettingsSource : public QWidget
{
    Q_OBJECT

public:
    struct Place
    {
        QString device; ///< its id; empty for a file
        QString file; ///< its path

        bool isNone() const { return device.isEmpty() && file.isEmpty(); }
        bool operator==(const Place &other) const { return device == other.device && file == other.file; }
    };

    /// Offers the open devices. `settings` must outlive this.
    explicit SettingsSource(DeviceSettings &settings, QWidget *parent = nullptr);

    QComboBox &box() { return *m_box; }
    /// Chooses a place, which is read; one that cannot be read is not chosen.
    void choose(const Place &place);
    /// Reads the place anew.
    void refresh() { choose(m_place); }
    const Place &place() const { return m_place; }
    /// What a person calls the place; empty without one.
    QString name() const { return nameOf(m_place); }
    /// Empty without a place.
    const Persistence::Settings &settings() const { return m_content; }

Q_SIGNALS:
    /// The place or its settings.
    void changed();
    /// A file cannot be read.
    void failed(const QString &sentence);

private:
    void adoptChoice(int row);
    void askForFile();
    /// None for the row that asks for a file.
    Place placeAt(int row) const;
    int rowOf(const Place &place);
    QString nameOf(const Place &place) const;
    std::optional<Persistence::Settings> read(const Place &place);
    std::optional<Persistence::Settings> readAsItIs(const Place &place);

    DeviceSettings &m_settings;
    QComboBox *m_box;
    Place m_place;
    Persistence::Settings m_content;
};
