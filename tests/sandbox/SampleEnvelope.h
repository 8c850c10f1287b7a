#pragma once

#include "sandbox/Json.h"

#include <string>
#include <utility>
#include <vector>

namespace norvane::sandbox {

struct Template;

/// The upload of the rental order, signed by its renter: two documents and two images. A test changes what it
/// wants to be wrong before it writes it.
class SampleEnvelope {
  public:
    struct Part {
        std::string disposition;
        std::string contentType;
        std::string body;
    };

    SampleEnvelope();

    Json& signer();
    /// The first tab of a list ("signHereTabs").
    Json& tab(const std::string& list);
    std::string transactionId() const { return json.text("transactionId"); }
    /// The body with the envelope's JSON as its first part and `parts` after it.
    std::string body() const;
    static std::string contentType() { return "multipart/form-data; boundary=sample-boundary"; }

    Json json;
    std::string disposition = "form-data; name=\"(null)\"";
    std::string jsonType = "application/json";
    std::vector<Part> parts;
};

/// One of the templates that every sandbox offers.
const Template& offeredTemplate(const std::string& templateId);

/// The smallest image that opens.
std::string samplePng();

} // namespace norvane::sandbox
