#pragma once

#include <norvane/platform/Value.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

struct NVESEmail;
struct NVESEnvelopeTemplate;
struct NVESRecipients;
struct NVESTabs;
struct NVESText;
struct NVESZip;

// Tabs of the wire that offline signing cannot show as they are. Number, zip, e-mail and date tabs may be
// turned into text tabs, each kind by a configuration key of its own.

bool hasEmailZipNumberDateTabs(const NVESTabs& tabs);
bool isZipTabsConversionPending();
bool isNumberTabsConversionPending();
bool isEmailTabsConversionPending();
bool isDateTabsConversionPending();
/// Whether a text tab made by conversion loses its merge field.
bool shouldSetMergeFieldAsNil();

/// Puts the converted zip, number, e-mail and date tabs, in this order, before the text tabs. The tabs that
/// they were made from stay in their own lists, deliberately.
void convertOfflineUnsupportedTextBasedTabsToTextTabs(NVESTabs& tabs);
/// The same for every recipient's tabs.
void convertOfflineUnsupportedTextBasedTabsToTextTabs(NVESRecipients& recipients);
void convertOfflineUnsupportedTextBasedTabsToTextTabs(NVESEnvelopeTemplate& envelopeTemplate);

/// A text tab with the fields of the given tab. Number and date tabs are JSON objects.
std::shared_ptr<NVESText> textTabWithNVESZip(const NVESZip& zip);
std::shared_ptr<NVESText> textTabWithNVESEmail(const NVESEmail& email);
std::shared_ptr<NVESText> textTabWithNumber(const Value& number);
std::shared_ptr<NVESText> textTabWithDate(const Value& date);

/// The lists that hold a tab which offline signing cannot show, by the kit's own names ("AttachmentTabs",
/// "ApproveTabs", "declineTabs" ...; the capitals differ deliberately). Empty when all can be shown.
std::vector<std::string> unsupportedOfflineTabTypes(const NVESTabs& tabs);
/// The same for the service's signing page, which shows every kind of tab: always empty.
std::vector<std::string> unsupportedOnlineTabTypes(const NVESTabs& tabs);

/// Whether any list holds a tab.
bool hasTabs(const NVESTabs& tabs);

} // namespace norvane
