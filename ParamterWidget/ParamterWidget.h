// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QModelIndex>
#include <QTimer>
#include <QWidget>

#include <GenApi/GenApi.h>

#include "PanelBase/PressElsewhere.h"
#include "ParamterWidget/PageSet.h"
#include "ParamterWidget/PanelContext.h"

class AttributeTab;
class DescriptionPane;
class OutputSelection;
class PanelTabs;
class RoiDrawing;
class ShownAgain;
class SoftTrigger;
class Ui_ParamterWidget;
struct ProfilerPages;
class UserSets;

/// The parameter panel of one device, or the empty panel that is shown when no device has the focus.
///
/// The owner sets the device kind, calls initUI() once and then passes the host's events on. Nodes are borrowed
/// from the host: setParamterViewDisable() must be called before the device's node map goes.
/// GUI thread only. No exception leaves its functions or slots; failures are logged through HostCore::VLogInfo.
class ParamterWidget : public QWidget, public EditScope
{
    Q_OBJECT

public:
    explicit ParamterWidget(QWidget *parent = nullptr);
    ~ParamterWidget() override;

    /// The pages that initUI() builds for a camera; those of area-scan cameras unless set otherwise before it. Other
    /// pages than these clear the area-scan flag.
    void setPageSet(PageSet pageSet);
    /// The kind of device, to be set before initUI(); both are false at first.
    void setAreaScan(bool areaScan) { m_context.areaScan = areaScan; }
    void setCard(bool card) { m_context.card = card; }
    bool isAreaScan() const { return m_context.areaScan; }
    bool isCard() const { return m_context.card; }
    /// The host's identifier of the device; empty in the default panel.
    QString deviceName() const { return m_context.deviceName; }

    /// Builds the pages for `device`, the host's identifier. Without a node map they stay empty. Pages are built once
    /// per panel, by this or by one of the functions below that build all of them.
    void initUI(QString device);
    void init2DParameterUI();
    /// The pages of the first, second and third tool box and the feature tree. `nodeMap` must not be null.
    void commonAttributeInit(GenApi::INodeMap *nodeMap);
    void triggerInit(GenApi::INodeMap *nodeMap);
    void advancedSettingsInit(GenApi::INodeMap *nodeMap);
    void parameterTreeViewInit(GenApi::INodeMap *nodeMap);
    /// The pages of laser profilers: all of them, and those of the four tool boxes.
    void init3DParameterUI();
    void triggerSettingTabInit(GenApi::INodeMap *nodeMap);
    void imageSettingTabInit(GenApi::INodeMap *nodeMap);
    void contourSettingTabInit(GenApi::INodeMap *nodeMap);
    void othersSettingTabInit(GenApi::INodeMap *nodeMap);
    /// Set the profiler's controls from the device and from the host's settings. They take no action without a device
    /// or for an area-scan camera.
    void init3DParameters();
    void update3DCustomParameters();
    void measureRangeAreaUpdate();
    void imageMaskWidgetUpdate();
    /// The pages of structured-light cameras: all of them, and those of the three tool boxes.
    void initSLParameterUI();
    void SLCommonAttributeInit(GenApi::INodeMap *nodeMap);
    void SLTriggerInit(GenApi::INodeMap *nodeMap);
    void SLAdvancedSettingsInit(GenApi::INodeMap *nodeMap);
    /// Offers the 2D images that the camera sends for being shown.
    void update2DShowTypeComboBox();

    /// Sets all texts in the application's language; `language` is 0 for English, any other value for Chinese.
    void retranslate(int language);
    /// Shows or hides the tab of the curated pages, and that of the feature tree.
    void setPanelWidgetVisiable(bool visible);
    void setAllDetailWidgetVisiable(bool visible);
    /// Stops all reading of the device, for good.
    void setParamterViewDisable();
    /// Reads the curated pages again, except folded groups. After an import all controls that belong to no feature
    /// show the device too, without a write; else those that may change with the acquisition.
    void updateWidget(bool afterImport);
    /// Locks and unlocks what must not change while the camera acquires.
    void startAcquireOperation();
    void stopAcquireOperation();
    /// Takes no action.
    void imageModeChangedUpdate(int mode);
    /// Selects the visibility level that the host has stored.
    void updateAttributeLevel();
    /// Takes the region that the user moved on the image view (image pixels), while one is being drawn.
    void setDrawRoiPos(int leftX, int leftY, int rightX, int rightY);
    /// Shows the rows of the drawn region in place of those of the camera's, or the other way round.
    void setDrawRoiStatus(bool drawing);

    /// As the functions of NodeAccess.h, for the panel's device.
    int getCameraNodeInfo(QString nodeName, int &value, int &min, int &max, int &inc);
    int setCameraNodeValue(QString nodeName, int value);
    GenApi::INode *getValidNodeFromName(QString name, GenApi::INodeMap *nodeMap);

public Q_SLOTS:
    // Slots of pages that a panel does not have take no action.
    void on_filter_changed();
    void onSigSelectItemClick(QModelIndex index);
    void onTriggerSwitchButtonClicked();
    void onTriggerTimeout();
    void onRoiSelectedButtonClicked();
    void onDrawParametersButtonClicked();
    void onExecDrawButtonClicked();
    void onCollapseButtonClicked();
    void onToolPageWidgetItemClicked();
    void onHDRValueChanged() { }
    void onExposureScaleValueChanged() { }
    void onImageShowModeChanged() { }
    void onLaserAdjustModeChanged();
    void onUserSetLoadButtonClicked();
    void onYMeasureValueChanged();
    void onGrayImageButtonClicked();
    void onImageBitValueChanged() { }
    void onTabWidgetIndexChanged();
    void onFrameTriggerModeChanged();
    void onFrameTriggerSourceChanged();
    void onSoftwareTriggerBtnClicked();
    void onLineScanModeChanged();
    void onBatchModeChanged();
    void onMeasureRangeValueChanged() { }
    void onDrawMeasureRangeClicked();
    void onResetImageSizeButtonClicked();
    void onDrawImageMaskButtonClicked() { }
    void onCorrectionValueChanged();
    void onCorrectionButtonClicked();
    void onZSizeInfoChanged();
    void onSizeInfoAutoClicked();
    void onRealUpdateTimerTimeout();
    void onMaskWidgetMouseClicked();
    void onMaskWidgetCloseButtonClicked() { }
    void on2DGrabOutputChanged(int index, bool status);
    void on2DShowTypeChanged(int index);

Q_SIGNALS:
    /// As ParamterWnd::written().
    void written(const QString &device, const QString &feature, const QString &value, const QString &refusal);

private:
    void connectControls();
    void buildTab(const TabSpec &tab, CToolBox *toolBox, GenApi::INodeMap *nodeMap);
    void buildProfilerTab(const TabSpec &tab, CToolBox *toolBox, GenApi::INodeMap *nodeMap);
    /// Shows the device in the controls that belong to no feature, in all of them or in those that may change with the
    /// acquisition.
    void showDevice(bool wholly);
    /// Ends the drawing of a region when the camera's image has become another one.
    void adoptImageSize();

    PanelContext m_context;
    std::unique_ptr<DescriptionPane> m_description;
    /// Hidden parent of the controls that no page has placed yet.
    QWidget *m_unplacedControls;
    std::unique_ptr<SoftTrigger> m_softTrigger;
    std::unique_ptr<RoiDrawing> m_roiDrawing;
    std::unique_ptr<UserSets> m_userSets;
    std::unique_ptr<ProfilerPages> m_profiler; ///< null without these pages
    std::unique_ptr<OutputSelection> m_outputSelection; ///< null without the pages of structured-light cameras
    QTimer m_liveRefreshTimer{this};
    std::unique_ptr<Ui_ParamterWidget> m_ui;
    std::unique_ptr<AttributeTab> m_attributeTab;
    std::unique_ptr<PanelTabs> m_tabs;
    ShownAgain *m_shownAgain;
    PageSet m_pageSet = PageSet::AreaScan;
};
