#pragma once

#include <norvane/store/NVMManagedObject.h>

// Tabs as they are stored. Members are the attributes and the relationships that lead to what a row owns;
// a number that stands for a Boolean is 1 or 0.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

#define NVMCD_FRAME_FIELDS(FIELD, R) \
    FIELD(R, Number, height) FIELD(R, Number, originX) FIELD(R, Number, originY) FIELD(R, Number, width)

/// Where a tab lies, in page points.
struct NVMCDFrame : NVMManagedObject {
    NVMCD_ENTITY(NVMCDFrame, NVMCD_FRAME_FIELDS)
};

#define NVMCD_MERGE_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, configurationType) FIELD(R, Text, path) FIELD(R, Bool, writeBack) \
    FIELD(R, Bool, allowSenderToEdit) FIELD(R, Number, row)

/// The record field behind a tab.
struct NVMCDMergeField : NVMManagedObject {
    NVMCD_ENTITY(NVMCDMergeField, NVMCD_MERGE_FIELD_FIELDS)
};

#define NVMCD_ERROR_DETAILS_FIELDS(FIELD, R) \
    FIELD(R, Text, message) FIELD(R, Text, errorCode)

/// The service's objection to a record.
struct NVMCDErrorDetails : NVMManagedObject {
    NVMCD_ENTITY(NVMCDErrorDetails, NVMCD_ERROR_DETAILS_FIELDS)
};

#define NVMCD_TAB_IMAGE_DATA_FIELDS(FIELD, R) \
    FIELD(R, Bytes, data)

/// The bytes of an image.
struct NVMCDTabImageData : NVMManagedObject {
    NVMCD_ENTITY(NVMCDTabImageData, NVMCD_TAB_IMAGE_DATA_FIELDS)
};

#define NVMCD_TAB_FIELDS(FIELD, R) \
    FIELD(R, Text, documentId) FIELD(R, Text, tabLabel) FIELD(R, Number, pageNumber) \
    FIELD(R, Text, recipientId) FIELD(R, Number, required) FIELD(R, Number, selected) \
    FIELD(R, Text, tabId) FIELD(R, Number, type_) FIELD(R, Text, value) FIELD(R, Number, templateLocked) \
    FIELD(R, Number, templateRequired) FIELD(R, Number, tabOrder) FIELD(R, Text, name) \
    FIELD(R, Text, customTabId) FIELD(R, Text, font) FIELD(R, Number, bold) FIELD(R, Number, italic) \
    FIELD(R, Number, underline) FIELD(R, Text, fontSize) FIELD(R, Text, fontColor) \
    FIELD(R, Number, locked) FIELD(R, Number, concealValueOnDocument) FIELD(R, Number, disableAutoSize) \
    FIELD(R, Number, maxLength) FIELD(R, Text, originalValue) FIELD(R, Text, scaleValue) \
    FIELD(R, Number, optional) FIELD(R, Number, isPaymentAmount) FIELD(R, Text, formula) \
    FIELD(R, Text, validationPattern) FIELD(R, Text, validationMessage) FIELD(R, Number, shared) \
    FIELD(R, Number, requireInitialOnSharedChange) FIELD(R, Number, senderRequired) \
    FIELD(R, Number, requireAll) FIELD(R, Text, anchorString) FIELD(R, Text, anchorXOffset) \
    FIELD(R, Text, anchorYOffset) FIELD(R, Text, anchorUnits) FIELD(R, Number, anchorIgnoreIfNotPresent) \
    FIELD(R, Number, anchorCaseSensitive) FIELD(R, Number, anchorMatchWholeWord) \
    FIELD(R, Text, anchorHorizontalAlignment) FIELD(R, Text, conditionalParentLabel) \
    FIELD(R, Text, conditionalParentValue) FIELD(R, Text, status) FIELD(R, Number, roundDecimalPlaces) \
    FIELD(R, Record<NVMCDFrame>, frameEntity) FIELD(R, Record<NVMCDMergeField>, mergeField) \
    FIELD(R, Record<NVMCDErrorDetails>, errorDetails) FIELD(R, Record<NVMCDTabImageData>, imageData)

/// A tab of any kind; `type_` tells which.
struct NVMCDTab : NVMManagedObject {
    NVMCD_ENTITY(NVMCDTab, NVMCD_TAB_FIELDS)
};

#define NVMCD_RADIO_GROUP_FIELDS(FIELD, R) \
    FIELD(R, Text, conditionalParentLabel) FIELD(R, Text, conditionalParentValue) \
    FIELD(R, Text, documentId) FIELD(R, Text, groupName) FIELD(R, Text, recipientId) \
    FIELD(R, Number, requireAll) FIELD(R, Number, requireInitialOnSharedChange) FIELD(R, Number, shared) \
    FIELD(R, List<NVMCDTab>, radios)

/// A named group of radio tabs.
struct NVMCDRadioGroup : NVMManagedObject {
    NVMCD_ENTITY(NVMCDRadioGroup, NVMCD_RADIO_GROUP_FIELDS)
};

#define NVMCD_TABS_FIELDS(FIELD, R) \
    FIELD(R, List<NVMCDTab>, checkboxTabs) FIELD(R, List<NVMCDTab>, companyTabs) \
    FIELD(R, List<NVMCDTab>, dateSignedTabs) FIELD(R, List<NVMCDTab>, fullNameTabs) \
    FIELD(R, List<NVMCDTab>, initialHereTabs) FIELD(R, List<NVMCDTab>, signHereTabs) \
    FIELD(R, List<NVMCDTab>, textTabs) FIELD(R, List<NVMCDTab>, titleTabs) \
    FIELD(R, List<NVMCDRadioGroup>, radioGroupTabs) FIELD(R, List<NVMCDTab>, formulaTabs)

/// The tabs of one recipient or template role, a list a kind.
struct NVMCDTabs : NVMManagedObject {
    NVMCD_ENTITY(NVMCDTabs, NVMCD_TABS_FIELDS)
};

} // namespace norvane
