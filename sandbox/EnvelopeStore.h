#pragma once

#include "sandbox/Document.h"
#include "sandbox/HttpMessage.h"
#include "sandbox/Json.h"
#include "sandbox/ReceivedEnvelope.h"
#include "sandbox/Upload.h"

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace norvane::sandbox {

/// What is to be kept of an accepted envelope.
struct NewEnvelope {
    const Request* request = nullptr;
    std::string_view json;
    Json definition;
    Json recipients;               ///< as they stand after templates have been applied
    std::vector<UploadPart> parts; ///< of a multipart upload; documents of a plain one
    bool multipart = false;
    std::vector<std::string> warnings;
};

/// The envelopes, each in a folder of its own:
///   request-headers.txt   the request line and the headers
///   parts/NN.headers, parts/NN.json|pdf|png   every part of a multipart upload, byte for byte
///   envelope.json         the definition as received
///   recipients.json       the recipients as they stand now
///   documents/*.pdf       documents that were changed since
///   images/*.png          images set for recipients
///   details.json          what was set later: custom fields, notification, lock, fields of documents, folder
///   summary.json          what is where, with sizes and SHA-256
/// A folder appears whole or not at all. Any thread may call.
class EnvelopeStore {
  public:
    /// Takes up what is kept in the folder from earlier runs.
    explicit EnvelopeStore(std::filesystem::path folder);

    /// Throws std::runtime_error when the envelope cannot be kept; what was begun is cleared at the next
    /// start.
    ReceivedEnvelope add(const NewEnvelope& envelope);
    std::vector<ReceivedEnvelope> all() const; ///< in order of arrival
    /// Removes them all, from the disk too.
    void forgetAll();
    std::optional<ReceivedEnvelope> find(const std::string& envelopeId) const;

    // The envelope must be known in all of these.
    void setStatus(const std::string& envelopeId, const std::string& status);
    Json recipients(const std::string& envelopeId) const;
    /// Changes the recipients under the store's lock; an answer of 400 and up leaves them as they were.
    Answer changeRecipients(const std::string& envelopeId,
                            const std::function<Answer(Json& recipients)>& change);

    /// Changes the documents in the same way.
    Answer changeDocuments(const std::string& envelopeId,
                           const std::function<Answer(std::vector<Document>& documents)>& change);

    void setImage(const std::string& envelopeId, const std::string& recipientId, const std::string& type,
                  std::string_view bytes);
    std::optional<std::string> image(const std::string& envelopeId, const std::string& recipientId,
                                     const std::string& type) const;

  private:
    struct Entry {
        ReceivedEnvelope envelope;
        Json recipients;
        std::int64_t sequence = 0;
    };
    void load(const std::filesystem::path& folder);
    std::optional<std::size_t> indexOf(const std::string& envelopeId) const;
    std::filesystem::path imageFile(const std::string& envelopeId, const std::string& recipientId,
                                    const std::string& type) const;

    const std::filesystem::path folder_;
    mutable std::mutex mutex_;
    std::vector<Entry> entries_; ///< guarded by mutex_
    std::int64_t sequence_ = 0;  ///< guarded by mutex_
};

} // namespace norvane::sandbox
