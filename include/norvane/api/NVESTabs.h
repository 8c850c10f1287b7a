#pragma once

#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESObject.h>

// Tab records: one struct a kind of tab, and the lists of them that a recipient carries.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

struct NVESApprove;
struct NVESCheckbox;
struct NVESCompany;
struct NVESDateSigned;
struct NVESDecline;
struct NVESEmail;
struct NVESEmailAddress;
struct NVESEnvelopeId;
struct NVESErrorDetails;
struct NVESFirstName;
struct NVESFormulaTab;
struct NVESFullName;
struct NVESInitialHere;
struct NVESLastName;
struct NVESList;
struct NVESListItem;
struct NVESMergeField;
struct NVESNote;
struct NVESRadio;
struct NVESRadioGroup;
struct NVESSignHere;
struct NVESSignerAttachment;
struct NVESSsn;
struct NVESText;
struct NVESTitle;
struct NVESZip;

#define NVES_TAB_POSITION_FIELDS(FIELD, R) \
    FIELD(R, Text, documentId) FIELD(R, Text, recipientId) FIELD(R, Text, pageNumber) \
    FIELD(R, Text, xPosition) FIELD(R, Text, yPosition)

#define NVES_ANCHOR_FIELDS(FIELD, R) \
    FIELD(R, Text, anchorString) FIELD(R, Text, anchorXOffset) FIELD(R, Text, anchorYOffset) \
    FIELD(R, Text, anchorUnits) FIELD(R, Text, anchorIgnoreIfNotPresent) \
    FIELD(R, Text, anchorCaseSensitive) FIELD(R, Text, anchorMatchWholeWord) \
    FIELD(R, Text, anchorHorizontalAlignment)

#define NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Text, tabId) FIELD(R, Text, templateLocked) FIELD(R, Text, templateRequired) \
    FIELD(R, Text, conditionalParentLabel) FIELD(R, Text, conditionalParentValue) \
    FIELD(R, Text, customTabId) FIELD(R, Record<NVESMergeField>, mergeField) FIELD(R, Text, status) \
    FIELD(R, Record<NVESErrorDetails>, errorDetails)

#define NVES_FONT_FIELDS(FIELD, R) \
    FIELD(R, Text, font) FIELD(R, Text, bold) FIELD(R, Text, italic) FIELD(R, Text, underline) \
    FIELD(R, Text, fontColor) FIELD(R, Text, fontSize)

#define NVES_VALIDATION_FIELDS(FIELD, R) \
    FIELD(R, Text, validationPattern) FIELD(R, Text, validationMessage) FIELD(R, Text, shared) \
    FIELD(R, Text, requireInitialOnSharedChange) FIELD(R, Text, senderRequired) \
    FIELD(R, Text, requireAll)

#define NVES_VALUE_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, value) FIELD(R, Text, originalValue) FIELD(R, Number, width) \
    FIELD(R, Text, required) FIELD(R, Text, locked) FIELD(R, Text, concealValueOnDocument) \
    FIELD(R, Text, disableAutoSize) FIELD(R, Number, maxLength)

struct NVESSignerAttachment : NVESObject {
    NORVANE_RECORD(NVESSignerAttachment, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESEnvelopeId : NVESObject {
    NORVANE_RECORD(NVESEnvelopeId, NVES_PASSED_THROUGH_FIELDS)
};

struct NVESEmailAddress : NVESObject {
    NORVANE_RECORD(NVESEmailAddress, NVES_PASSED_THROUGH_FIELDS)
};

#define NVES_MERGE_FIELD_FIELDS(FIELD, R) \
    FIELD(R, Text, configurationType) FIELD(R, Text, path) FIELD(R, Text, writeBack) \
    FIELD(R, Text, allowSenderToEdit) FIELD(R, Text, row)
struct NVESMergeField : NVESObject {
    NORVANE_RECORD(NVESMergeField, NVES_MERGE_FIELD_FIELDS)
};

#define NVES_TAB_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, tabLabel) NVES_TAB_POSITION_FIELDS(FIELD, R) \
    NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) FIELD(R, Number, tabOrder)
struct NVESTab : NVESObject {
    NORVANE_RECORD(NVESTab, NVES_TAB_FIELDS)
};

#define NVES_SIGN_HERE_OWN_FIELDS(FIELD, R) \
    FIELD(R, Text, scaleValue) FIELD(R, Text, optional) FIELD(R, Text, imageDataBase64) \
    FIELD(R, Text, stampType)
#define NVES_SIGN_HERE_FIELDS(FIELD, R) \
    NVES_TAB_FIELDS(FIELD, R) NVES_SIGN_HERE_OWN_FIELDS(FIELD, R)
struct NVESSignHere : NVESTab {
    NORVANE_RECORD(NVESSignHere, NVES_SIGN_HERE_OWN_FIELDS)
};

#define NVES_INITIAL_HERE_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, tabLabel) FIELD(R, Text, scaleValue) FIELD(R, Text, optional) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Number, tabOrder) FIELD(R, Text, imageDataBase64) FIELD(R, Text, stampType)
struct NVESInitialHere : NVESObject {
    NORVANE_RECORD(NVESInitialHere, NVES_INITIAL_HERE_FIELDS)
};

#define NVES_FULL_NAME_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Number, tabOrder)
struct NVESFullName : NVESObject {
    NORVANE_RECORD(NVESFullName, NVES_FULL_NAME_FIELDS)
};

#define NVES_DATE_SIGNED_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, value) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Number, tabOrder)
struct NVESDateSigned : NVESObject {
    NORVANE_RECORD(NVESDateSigned, NVES_DATE_SIGNED_FIELDS)
};

#define NVES_TEXT_FIELDS(FIELD, R) \
    FIELD(R, Number, height) FIELD(R, Text, isPaymentAmount) FIELD(R, Text, formula) \
    NVES_VALIDATION_FIELDS(FIELD, R) NVES_VALUE_FIELDS(FIELD, R) FIELD(R, Text, tabLabel) \
    NVES_FONT_FIELDS(FIELD, R) NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) \
    NVES_TAB_STATE_FIELDS(FIELD, R) FIELD(R, Number, tabOrder)
struct NVESText : NVESObject {
    NORVANE_RECORD(NVESText, NVES_TEXT_FIELDS)
};

#define NVES_CHECKBOX_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, tabLabel) FIELD(R, Text, selected) FIELD(R, Text, shared) \
    FIELD(R, Text, requireInitialOnSharedChange) FIELD(R, Text, required) FIELD(R, Text, locked) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Number, tabOrder)
struct NVESCheckbox : NVESObject {
    NORVANE_RECORD(NVESCheckbox, NVES_CHECKBOX_FIELDS)
};

#define NVES_RADIO_FIELDS(FIELD, R) \
    FIELD(R, Text, pageNumber) FIELD(R, Text, xPosition) FIELD(R, Text, yPosition) \
    NVES_ANCHOR_FIELDS(FIELD, R) FIELD(R, Text, value) FIELD(R, Text, selected) FIELD(R, Text, tabId) \
    FIELD(R, Text, required) FIELD(R, Text, locked) FIELD(R, Record<NVESErrorDetails>, errorDetails)
struct NVESRadio : NVESObject {
    NORVANE_RECORD(NVESRadio, NVES_RADIO_FIELDS)
};

#define NVES_RADIO_GROUP_FIELDS(FIELD, R) \
    FIELD(R, Text, documentId) FIELD(R, Text, recipientId) FIELD(R, Text, conditionalParentLabel) \
    FIELD(R, Text, conditionalParentValue) FIELD(R, Text, groupName) FIELD(R, List<NVESRadio>, radios) \
    FIELD(R, Text, shared) FIELD(R, Text, requireInitialOnSharedChange) FIELD(R, Text, requireAll)
struct NVESRadioGroup : NVESObject {
    NORVANE_RECORD(NVESRadioGroup, NVES_RADIO_GROUP_FIELDS)
};

#define NVES_COMPANY_FIELDS(FIELD, R) \
    NVES_VALUE_FIELDS(FIELD, R) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Number, tabOrder)
struct NVESCompany : NVESObject {
    NORVANE_RECORD(NVESCompany, NVES_COMPANY_FIELDS)
};

#define NVES_TITLE_FIELDS(FIELD, R) \
    NVES_VALUE_FIELDS(FIELD, R) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Number, tabOrder)
struct NVESTitle : NVESObject {
    NORVANE_RECORD(NVESTitle, NVES_TITLE_FIELDS)
};

#define NVES_FORMULA_TAB_FIELDS(FIELD, R) \
    FIELD(R, Text, isPaymentAmount) FIELD(R, Text, formula) NVES_VALIDATION_FIELDS(FIELD, R) \
    NVES_VALUE_FIELDS(FIELD, R) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R) \
    FIELD(R, Text, roundDecimalPlaces)
struct NVESFormulaTab : NVESObject {
    NORVANE_RECORD(NVESFormulaTab, NVES_FORMULA_TAB_FIELDS)
};

#define NVES_ZIP_FIELDS(FIELD, R) \
    FIELD(R, Text, useDash4) NVES_VALIDATION_FIELDS(FIELD, R) NVES_VALUE_FIELDS(FIELD, R) \
    FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) NVES_TAB_POSITION_FIELDS(FIELD, R) \
    NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESZip : NVESObject {
    NORVANE_RECORD(NVESZip, NVES_ZIP_FIELDS)
};

#define NVES_EMAIL_FIELDS(FIELD, R) \
    NVES_VALIDATION_FIELDS(FIELD, R) NVES_VALUE_FIELDS(FIELD, R) FIELD(R, Text, tabLabel) \
    NVES_FONT_FIELDS(FIELD, R) NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) \
    NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESEmail : NVESObject {
    NORVANE_RECORD(NVESEmail, NVES_EMAIL_FIELDS)
};

#define NVES_SSN_FIELDS(FIELD, R) \
    NVES_VALIDATION_FIELDS(FIELD, R) NVES_VALUE_FIELDS(FIELD, R) FIELD(R, Text, tabLabel) \
    NVES_FONT_FIELDS(FIELD, R) NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) \
    NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESSsn : NVESObject {
    NORVANE_RECORD(NVESSsn, NVES_SSN_FIELDS)
};

#define NVES_NOTE_FIELDS(FIELD, R) \
    FIELD(R, Number, width) FIELD(R, Number, height) FIELD(R, Text, shared) FIELD(R, Text, value) \
    FIELD(R, Text, name) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESNote : NVESObject {
    NORVANE_RECORD(NVESNote, NVES_NOTE_FIELDS)
};

#define NVES_LIST_ITEM_FIELDS(FIELD, R) \
    FIELD(R, Text, text) FIELD(R, Text, value) FIELD(R, Text, selected)
struct NVESListItem : NVESObject {
    NORVANE_RECORD(NVESListItem, NVES_LIST_ITEM_FIELDS)
};

#define NVES_LIST_FIELDS(FIELD, R) \
    FIELD(R, List<NVESListItem>, listItems) FIELD(R, Text, value) FIELD(R, Number, width) \
    FIELD(R, Text, shared) FIELD(R, Text, requireInitialOnSharedChange) FIELD(R, Text, required) \
    FIELD(R, Text, locked) FIELD(R, Text, senderRequired) FIELD(R, Text, requireAll) \
    FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) NVES_TAB_POSITION_FIELDS(FIELD, R) \
    NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESList : NVESObject {
    NORVANE_RECORD(NVESList, NVES_LIST_FIELDS)
};

#define NVES_APPROVE_FIELDS(FIELD, R) \
    FIELD(R, Text, buttonText) FIELD(R, Number, width) FIELD(R, Number, height) \
    FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) NVES_TAB_POSITION_FIELDS(FIELD, R) \
    NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESApprove : NVESObject {
    NORVANE_RECORD(NVESApprove, NVES_APPROVE_FIELDS)
};

#define NVES_DECLINE_FIELDS(FIELD, R) \
    FIELD(R, Text, buttonText) FIELD(R, Number, width) FIELD(R, Number, height) \
    FIELD(R, Text, declineReason) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESDecline : NVESObject {
    NORVANE_RECORD(NVESDecline, NVES_DECLINE_FIELDS)
};

#define NVES_FIRST_NAME_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESFirstName : NVESObject {
    NORVANE_RECORD(NVESFirstName, NVES_FIRST_NAME_FIELDS)
};

#define NVES_LAST_NAME_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, tabLabel) NVES_FONT_FIELDS(FIELD, R) \
    NVES_TAB_POSITION_FIELDS(FIELD, R) NVES_ANCHOR_FIELDS(FIELD, R) NVES_TAB_STATE_FIELDS(FIELD, R)
struct NVESLastName : NVESObject {
    NORVANE_RECORD(NVESLastName, NVES_LAST_NAME_FIELDS)
};

#define NVES_TABS_FIELDS(FIELD, R) \
    FIELD(R, List<NVESSignHere>, signHereTabs) FIELD(R, List<NVESInitialHere>, initialHereTabs) \
    FIELD(R, List<NVESSignerAttachment>, signerAttachmentTabs) FIELD(R, List<NVESApprove>, approveTabs) \
    FIELD(R, List<NVESDecline>, declineTabs) FIELD(R, List<NVESFullName>, fullNameTabs) \
    FIELD(R, List<NVESDateSigned>, dateSignedTabs) FIELD(R, List<NVESEnvelopeId>, envelopeIdTabs) \
    FIELD(R, List<NVESCompany>, companyTabs) FIELD(R, List<NVESTitle>, titleTabs) \
    FIELD(R, List<NVESText>, textTabs) FIELD(R, Any, numberTabs) FIELD(R, List<NVESSsn>, ssnTabs) \
    FIELD(R, Any, dateTabs) FIELD(R, List<NVESZip>, zipTabs) FIELD(R, List<NVESEmail>, emailTabs) \
    FIELD(R, List<NVESNote>, noteTabs) FIELD(R, List<NVESCheckbox>, checkboxTabs) \
    FIELD(R, List<NVESRadioGroup>, radioGroupTabs) FIELD(R, List<NVESList>, listTabs) \
    FIELD(R, List<NVESFirstName>, firstNameTabs) FIELD(R, List<NVESLastName>, lastNameTabs) \
    FIELD(R, List<NVESEmailAddress>, emailAddressTabs) FIELD(R, List<NVESFormulaTab>, formulaTabs)
struct NVESTabs : NVESObject {
    NORVANE_RECORD(NVESTabs, NVES_TABS_FIELDS)
};

} // namespace norvane
// clang-format on
