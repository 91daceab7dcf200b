// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include <QList>
#include <QMap>
#include <QMutex>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include "ParamterWnd/HostCore.h"
#include "ParamterWnd/KeptPlaces.h"

class HostLink;
class ParamterWidget;
struct WindowForm;

/// Keeps one panel per open camera and per open card, creates and removes them as the host's device list says, and
/// shows the one of the focused device, or the empty default panel.
///
/// Its HostLink registers listeners with the host; all panels are its child widgets. GUI thread only.
/// No exception leaves its functions or slots; failures are logged through HostCore::VLogInfo.
class ParameterWidgetManager : public QWidget
{
    Q_OBJECT

public:
    explicit ParameterWidgetManager(QWidget *parent = nullptr);
    ~ParameterWidgetManager() override;

    /// Shows `panel` (a child of the manager) in place of the one shown before. The keyboard focus stays in the panels:
    /// the widget of `panel` that had it last gets it.
    void setCurParamWidget(ParamterWidget *panel);
    /// Shows or hides a tab in every panel, now and later. The parent widget hides when both tabs are hidden.
    void setPanelWidgetVisiable(bool visible);
    void setAllDetailWidgetVisiable(bool visible);
    /// Stops all reading of the camera `id`.
    void setParamterViewDisable(QString id);
    /// Takes no action.
    void setDefaultParamterWidgetMode(int mode);
    bool eventFilter(QObject *window, QEvent *event) override;

public Q_SLOTS:
    /// Reconciles the panels with the host's list and sets the finish flag on every path. A newly opened card ends
    /// the event; the cameras wait for the next one.
    void onDeviceListUpdate(int source, QStringList cardList, QStringList camList, QSharedPointer<bool> finishPointer);
    void onFoucusChanged(HostCore::FOCUS_TYPE type, QString id);
    void onImageModeUpdate(std::string id, int mode);
    void onROIPosChanged(std::string id, int leftX, int leftY, int rightX, int rightY, int operation, int &roiId,
                         bool &status);
    void onImportChanged(QString id);

Q_SIGNALS:
    /// As ParamterWnd::written().
    void written(const QString &device, const QString &feature, const QString &value, const QString &refusal);

private:
    using PanelMap = QMap<QString, ParamterWidget *>;

    void connectHost();
    void onLanguageChanged(int language);
    /// Logs what is wrong with a list of type codes (PageSetLists) that the host has just set.
    void checkList(const QByteArray &property) const;

    bool updateCard(const QString &card);
    void updateCamera(const QString &camera);
    void openCamera(const QString &camera);
    ParamterWidget *createPanel();
    void openPanel(ParamterWidget *panel, const QString &device, PanelMap &panels);
    void closePanel(const QString &device, PanelMap &panels);
    /// The panel, no longer in the map; null when there is none.
    ParamterWidget *takeLocked(const QString &device, PanelMap &panels);
    /// Those of the cameras, of the cards, and the default panel.
    QList<ParamterWidget *> allPanels() const;
    QList<ParamterWidget *> allPanelsLocked();
    void showWindowIfTabs();

    std::unique_ptr<HostLink> m_host;
    ParamterWidget *m_defaultPanel;
    ParamterWidget *m_currentPanel = nullptr; ///< null after the shown panel was removed
    PanelMap m_cameraPanels;
    PanelMap m_cardPanels;
    KeptPlaces m_keptPlaces;
    QMutex m_mutex; ///< guards the panel maps; never held across a call of the host
    bool m_panelVisible = true;
    bool m_detailVisible = true;
    int m_language = 0;
    std::unique_ptr<WindowForm> m_ui;
};
