// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <GenApi/GenApi.h>

#include "ToolPage/RowControl.h"
#include "ToolPage/RowFace.h"
#include "ToolPage/RowFeature.h"
#include "ToolPage/RowTurn.h"
#include "ToolPage/RowWriter.h"

class EditorFocus;

/// A row of a curated page, 40 pixels high: a label on the left and an editor on the right. Bound to a
/// feature it makes its own editor, keeps it in step with the feature, writes what the user enters, and
/// logs and rolls back when the device refuses it, or when what was typed is no number inside the limits. NumberInput
/// decides when an edit ends; Enter writes the value of an untouched field, too, unless the field cannot hold it.
/// No refresh disturbs a field with input, and Escape gives it back the device's value. An edit that is cut off
/// because the row is disabled or hidden writes nothing.
///
/// Labels and descriptions are pairs [English, Chinese]; a language index of 0 means English, any other Chinese.
class ToolPageWidgetItem : public QWidget
{
    Q_OBJECT

public:
    explicit ToolPageWidgetItem(QWidget *parent = nullptr);
    ~ToolPageWidgetItem() override;

    /// How the device is read that the row belongs to, to be set before the feature; null: at once.
    void setReading(DeviceReading *reading);
    /// Binds the row to a feature; the node (may be null) must outlive the row's use. A node that is no
    /// feature, or an Invisible one, counts as none. With `hideWhenUnavailable` the row is hidden while
    /// there is no readable feature with an editor, or none was read yet. The label's text appears with setLanguage().
    void setItemInfo(const QStringList &names, const QStringList &descriptions, GenApi::INode *node,
                     bool hideWhenUnavailable);
    /// Shows the caller's widget, which becomes a child, as editor; without one the row is only a label.
    void setItemInfo(const QStringList &names, const QStringList &descriptions, QWidget *widget);
    /// Takes over the texts only.
    void setItemInfo(const QStringList &names, const QStringList &descriptions);

    /// Makes or refreshes the editor for a node and returns the editor, null for types without one.
    /// `available` becomes true when the node is readable (commands: always), false when it is not; it stays
    /// as it was for a null node and when the node throws, which is logged once per cause.
    QWidget *getParameterWidget(GenApi::INode *node, bool &available);
    QWidget *getIntParamWidget(GenApi::INode *node, bool &available);
    QWidget *getBoolParamWidget(GenApi::INode *node, bool &available);
    QWidget *getFloatParamWidget(GenApi::INode *node, bool &available);
    QWidget *getEnumParamWidget(GenApi::INode *node, bool &available);
    QWidget *getCommandParamWidget(GenApi::INode *node, bool &available);

    /// Refreshes from the feature (false), at once or in its turn, or a float or enumeration editor from the host's
    /// live value (true) unless the user is in it, in its turn, too. Writes nothing.
    void updateWidget(bool live);
    /// Whether the row has a feature that could be shown when it was asked last.
    bool isAvailable() const { return m_available; }
    /// The caller's permission to edit; from the next refresh on, editors of features that are not writable
    /// are disabled whatever it says. Without an editor nothing changes.
    void setWidgetItemEnable(bool enable);
    /// The caller's permission to show the row. With it, a row that hides when unavailable is shown as soon as its
    /// feature is available, never without a feature; without it every refresh leaves the row hidden.
    void setWidgetItemVisible(bool visible);
    /// Lets go of the feature for good: the row keeps what it shows, disabled, and asks the device nothing more.
    void releaseNode();
    /// The device does not answer: the editor is disabled and keeps what it shows, and what is being typed.
    void showSilence();
    void setLanguage(int language);
    /// Empty outside the list.
    QString getDescription(int language) const;
    void setCurrentColor(const QColor &color);
    /// Writes what the editor shows of a readable float feature to the feature.
    void setCurrentValue();

    /// The host's key of the device whose live values updateWidget(true) asks for.
    QString deviceName;

    /// Room for the editor; the label may vanish.
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The row wrote its feature (not for commands); the value is always invalid.
    void valueChanged(const QVariant &value);
    /// The row executed its command.
    void commandExecuted();
    /// The mouse was pressed on the row.
    void itemClicked();
    /// A refresh has found isAvailable() changed.
    void availabilityChanged();
    /// The editor got the keyboard focus.
    void itemFocused();

public Q_SLOTS:
    // Connected to the editors that the row makes; the editor is the sender.
    void onIntParamChanged();
    void onBoolParamChanged();
    void onFloatParamChanged();
    void onEnumParamChanged(const QString &text);
    void onCommandParamChanged();

protected:
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    using EnterEvent = QEvent;
#else
    using EnterEvent = QEnterEvent;
#endif
    void enterEvent(EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    /// The focus does not wander off to another row, where the next key would work, when an editor is disabled.
    bool focusNextPrevChild(bool next) override;

private:
    void refresh();
    void showLiveValue();
    void hideUnlessAvailable();
    void showRow(bool visible);

    EditorFocus *m_focus; ///< child
    RowFeature m_feature;
    RowFace m_face;
    RowControl m_control;
    RowWriter m_writer;
    RowTurn m_turn;
    RowTurn m_liveTurn;
    QStringList m_descriptions;
    QColor m_color; ///< of the background
    bool m_available = false; ///< when the feature could be asked last
    bool m_hideWhenUnavailable = false;
    bool m_showable = true; ///< the caller's permission to show the row
};
