// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include <GenApi/GenApi.h>

/// The business library of the host application, as the panel needs it: declarations only.
/// A host implements these functions; the panel calls them and implements the listeners.
///
/// All texts are UTF-8. A device key is the host's identifier of a camera or card: the text of its
/// device-list and focus events. The panel calls everything on the GUI thread, except StartGrab(),
/// which it may call from a worker thread. No function may run an event loop. Where an `int` is
/// returned, 0 is success and any other value a failure that the panel does not look at further. An
/// exception counts as a failure.
namespace HostCore {

/// The kind of object that has the host's focus; also selects whose node map is wanted.
/// Hosts may send other values, which mean "no device".
enum FOCUS_TYPE : int { FOCUS_CARD = 2, FOCUS_CAMERA = 3 };

/// The node map of a device that is wanted.
enum NodeMapType : int { NODE_MAP_DEVICE = 3 };

/// Items of information that the host keeps per camera, as text.
enum CAM_INFO : int {
    CAM_INFO_OPENED = 3, ///< "1": opened; a panel needs this and CAM_INFO_READY
    CAM_INFO_READY = 4, ///< "1": ready for a panel
    CAM_INFO_TYPE_CODE = 6, ///< device type: "1" and "5" are not area-scan, "4" has no curated pages
    CAM_INFO_ACQUISITION = 10, ///< "1" while grabbing, "0" while not
    CAM_INFO_DISPLAY_FIRST = 50, ///< first of the display settings that a host stores per camera
    CAM_INFO_SAMPLING_RATE = 51, ///< of the 3D view: "1" to "128"; "0": automatic
    CAM_INFO_CONTOUR_SPACING = 52, ///< distance of the rows of the 3D view in mm
    CAM_INFO_GRAY_IMAGE = 53, ///< "1": the intensity image is shown
    CAM_INFO_AUTOMATIC_Z_RANGE = 54, ///< "1": the next acquisition sets the two below
    CAM_INFO_Z_MAXIMUM = 55, ///< of the displayed range of heights in mm
    CAM_INFO_Z_MINIMUM = 56,
    CAM_INFO_DISPLAY_LAST = 56
};

/// Items of information that the host keeps per card, as text.
enum CARD_INFO : int {
    CARD_INFO_STATE = 1, ///< the panel acts on a card in state "4" only
    CARD_INFO_OPEN = 3 ///< "1" while the card is open
};

/// Application-wide settings that the host stores, as text.
enum PARAMETER_INFO : int {
    PARAMETER_INFO_ATTRIBUTE_LEVEL = 24 ///< visibility level: "0" Beginner, "1" Expert, "2" Guru; "" is "0"
};

// The listeners. The host holds raw pointers between registration and unregistration and never
// deletes them. It may call OnUpdate() from any thread unless stated otherwise.

/// The list of cards and cameras changed. The call returns when the panel has followed the change
/// (after 5 s at the latest) or goes, so a host must not hold a lock that the GUI thread may want.
struct IDeviceListUpdate
{
    virtual void OnUpdate(int source, std::vector<std::string> cardList, std::vector<std::string> camList) = 0;

protected:
    ~IDeviceListUpdate() = default;
};

/// Another object got the host's focus. To be called on the GUI thread.
struct IFocusUpdate
{
    virtual void OnUpdate(FOCUS_TYPE type, std::string id) = 0;

protected:
    ~IFocusUpdate() = default;
};

/// The application's language changed: "English", or any other name for Chinese.
struct ILangUpdate
{
    virtual void OnUpdate(std::string language) = 0;

protected:
    ~ILangUpdate() = default;
};

/// A region on the image view changed. To be called on the GUI thread. `operation` 1 is a move; corners
/// are image pixels. The references are neither read nor written by the panel.
struct IROIDrawUpdate
{
    virtual void OnUpdate(std::string id, int leftX, int leftY, int rightX, int rightY, int operation, int &roiId,
                          bool &status, int reserved1, int reserved2) = 0;

protected:
    ~IROIDrawUpdate() = default;
};

/// A camera's image mode changed. To be called on the GUI thread.
struct IImageModeUpdate
{
    virtual void OnUpdate(std::string id, int mode) = 0;

protected:
    ~IImageModeUpdate() = default;
};

/// Parameters were imported into a device; its panel reads them again.
struct IImportUpdate
{
    virtual void OnUpdate(std::string id) = 0;

protected:
    ~IImportUpdate() = default;
};

// Registration. From registration on the host may call the listener; after unregistration has returned
// it makes no further call, and the panel deletes the listener.
void RegisterDeviceListUpdateListener(IDeviceListUpdate *listener);
void RegisterFocusUpdateListener(IFocusUpdate *listener);
void RegisterLangUpdateListener(ILangUpdate *listener);
void RegisterROIUpdateListener(IROIDrawUpdate *listener);
void RegisterImageModeUpdateListener(IImageModeUpdate *listener);
void RegisterImportUpdateListener(IImportUpdate *listener);
void UnRegisterDeviceListUpdateListener(IDeviceListUpdate *listener);
void UnRegisterFocusUpdateListener(IFocusUpdate *listener);
void UnRegisterLangUpdateListener(ILangUpdate *listener);
void UnRegisterROIUpdateListener(IROIDrawUpdate *listener);
void UnRegisterImageModeUpdateListener(IImageModeUpdate *listener);
void UnRegisterImportUpdateListener(IImportUpdate *listener);

/// The current text of an item; empty when the device or the item is unknown.
std::string GetCameraInfo(std::string deviceKey, CAM_INFO item);
/// Stores an item; the panel writes only CAM_INFO_DISPLAY_FIRST to CAM_INFO_DISPLAY_LAST.
void SetCameraInfo(std::string deviceKey, CAM_INFO item, const std::string &value);
/// The current text of an item; empty when the card or the item is unknown.
std::string GetCardInfo(std::string deviceKey, CARD_INFO item);
/// The stored text of an application-wide setting; empty when it was never stored.
std::string GetParamterInfo(PARAMETER_INFO item);
/// Stores an application-wide setting.
void SetParamterInfo(PARAMETER_INFO item, std::string value);

/// The device's node map, owned by the host; null when the host has none for that key. It stays valid
/// until the device-list event that reports the device as closed has been handled.
GenApi::INodeMap *GetAttrNodeMap(FOCUS_TYPE type, std::string deviceKey, NodeMapType kind);
/// Reads a feature as text ("True"/"False" for booleans). A failure leaves `value` as it was.
int GetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string &value);
/// Writes a feature from text ("1"/"0" for booleans); an empty value executes a command.
int SetCameraNodeValue(std::string deviceKey, std::string nodeName, std::string value);

/// Lets the user draw a region on the image view, starting from the given corners (image pixels). On
/// success `roiId` names the region and `status` tells whether it was accepted; moves arrive through
/// IROIDrawUpdate.
int DrawROI(std::string deviceKey, int leftX, int leftY, int rightX, int rightY, int &roiId, bool &status,
            int reserved1, int reserved2);
/// Removes a region from the image view.
void RomoveROI(std::string deviceKey, int roiId);
/// Moves a drawn region to new corners (image pixels).
void SetROIPos(std::string deviceKey, int roiId, int leftX, int leftY, int rightX, int rightY);
/// Starts acquisition. May be called from any thread.
void StartGrab(std::string deviceKey);
/// Display request of the laser-profiler pages.
void SetCameraImageMode(std::string deviceKey, int mode, bool flag);
/// Display request of the structured-light pages.
void SetSLImageShowMode(std::string deviceKey, int mode);
/// Correction request of the laser-profiler pages: sets `result`, a QDoubleSpinBox that shows `value`, to what corrects
/// the tilt (kind 0, in degrees) or the heights (kind 1, a factor) of the newest profile, before it returns. Leaves it
/// alone when there is none.
void NotifyCorrection(std::string deviceKey, int kind, float value, void *result);

/// Appends a line to the host's log. `module` is the reporting class, `level` 0 an ordinary report.
void VLogInfo(const std::string &module, const std::string &message, int level);

} // namespace HostCore
