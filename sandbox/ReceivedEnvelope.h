#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace norvane::sandbox {

/// A file that came with an envelope, kept byte for byte.
struct ReceivedFile {
    std::string id;   ///< documentId of a document, tabId of an image
    std::string name; ///< a document's file name as sent; empty for an image
    std::filesystem::path path;
    std::uint64_t size = 0;
    std::string sha256; ///< in hexadecimal digits
};

/// An envelope that the service has accepted.
struct ReceivedEnvelope {
    std::string envelopeId; ///< given by the service
    std::string transactionId;
    std::string status; ///< "created", "sent" or "completed"
    std::string statusDateTime;
    std::string emailSubject;
    bool multipart = false;       ///< uploaded as an offline envelope
    std::filesystem::path folder; ///< where it is kept
    std::string json;             ///< the envelope definition as received
    std::vector<ReceivedFile> documents;
    std::vector<ReceivedFile> images;
    std::vector<std::string> warnings; ///< what looks forgotten though it was accepted
};

} // namespace norvane::sandbox
