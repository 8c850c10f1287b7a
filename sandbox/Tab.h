#pragma once

#include "sandbox/Json.h"

#include <string>
#include <string_view>

namespace norvane::sandbox {

/// An area of a page in points, measured from the page's top left corner.
struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// A field of a document, as the drawing of the document places it.
struct Tab {
    enum class Kind {
        SignHere,
        InitialHere,
        Text,
        Checkbox,
        Company,
        Title,
        FullName,
        DateSigned,
        Formula,
        Radio
    };

    Kind kind = Kind::Text;
    std::string recipientId;
    std::string label; ///< unique within its recipient; the radio's value for a radio
    Box box;           ///< where the signer sees it
    int page = 0;      ///< counted from 1, set by the writer that places it
    bool required = false;
    int maximumLength = 4000; ///< of a text, company or title
    std::string formula;      ///< of a formula
    std::string group;        ///< of a radio
};

/// What a signer's device shows when a tab has no size of its own.
inline constexpr Box kSignatureSize{0, 0, 53, 45};
inline constexpr Box kInitialsSize{0, 0, 36, 50};
inline constexpr double kCheckboxSide = 17;
inline constexpr double kTextHeight = 18;

/// Adds the tab to a recipient's tabs ("textTabs" and so on; radios into their group). `tabId` names it
/// within its template.
void addTab(Json& tabs, const Tab& tab, const std::string& documentId, const std::string& tabId, int order);

} // namespace norvane::sandbox
