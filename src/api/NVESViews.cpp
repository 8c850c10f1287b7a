#include <norvane/api/NVESViews.h>

namespace norvane {

NORVANE_TABLE(NVESViewUrl, NVES_VIEW_URL_FIELDS)
NORVANE_TABLE(NVESRecipientViewRequest, NVES_RECIPIENT_VIEW_REQUEST_FIELDS)
NORVANE_TABLE(NVESReturnUrlRequest, NVES_RETURN_URL_REQUEST_FIELDS)

} // namespace norvane
