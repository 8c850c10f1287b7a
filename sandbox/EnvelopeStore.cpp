#include "sandbox/EnvelopeStore.h"

#include "sandbox/EnvelopeCheck.h"
#include "sandbox/PrivateFile.h"
#include "sandbox/Text.h"

#include <algorithm>
#include <utility>

namespace norvane::sandbox {

namespace {

namespace fs = std::filesystem;
using Kind = UploadPart::Kind;

constexpr const char* kUnfinished = ".new-";

std::string headersText(const Request& request) {
    std::string text = request.method + " " + request.target + "\r\n";
    for (const auto& [name, value] : request.headers)
        text.append(name).append(": ").append(value).append("\r\n");
    return text;
}

const char* extensionOf(Kind kind) {
    if (kind == Kind::Envelope) return ".json";
    return kind == Kind::Document ? ".pdf" : ".png";
}

/// An envelope whose signers have all signed on their device is complete when it arrives.
std::string statusOf(const NewEnvelope& envelope) {
    bool everyone = true;
    bool anyone = false;
    forEachSigner(envelope.recipients, [&](const Json& signer) {
        anyone = true;
        everyone = everyone && !signer.text("signedDateTime").empty();
    });
    return anyone && everyone ? "completed" : envelope.definition.text("status");
}

Json fileJson(const ReceivedFile& file) {
    return Json::object({{"id", file.id},
                         {"name", file.name},
                         {"file", (file.path.parent_path().filename() / file.path.filename()).string()},
                         {"size", static_cast<std::int64_t>(file.size)},
                         {"sha256", file.sha256}});
}

ReceivedFile fileOf(const Json& json, const fs::path& folder) {
    const Json* size = json.find("size");
    return {json.text("id"), json.text("name"), folder / json.text("file"),
            static_cast<std::uint64_t>(size ? size->asInteger() : 0), json.text("sha256")};
}

Json summaryJson(const ReceivedEnvelope& envelope, std::int64_t sequence) {
    Json::Array documents;
    Json::Array images;
    Json::Array warnings;
    for (const auto& file : envelope.documents)
        documents.push_back(fileJson(file));
    for (const auto& file : envelope.images)
        images.push_back(fileJson(file));
    for (const auto& warning : envelope.warnings)
        warnings.emplace_back(warning);
    return Json::object({{"sequence", sequence},
                         {"envelopeId", envelope.envelopeId},
                         {"transactionId", envelope.transactionId},
                         {"status", envelope.status},
                         {"statusDateTime", envelope.statusDateTime},
                         {"emailSubject", envelope.emailSubject},
                         {"multipart", envelope.multipart},
                         {"documents", std::move(documents)},
                         {"images", std::move(images)},
                         {"warnings", std::move(warnings)}});
}

/// Writes the parts and notes where they will lie once the folder has its name.
void writeParts(const NewEnvelope& source, const fs::path& folder, ReceivedEnvelope& envelope) {
    int number = 0;
    makePrivateFolder(folder / "parts");
    for (const UploadPart& part : source.parts) {
        ++number;
        const std::string stem = (number < 10 ? "0" : "") + std::to_string(number);
        const std::string name = stem + extensionOf(part.kind);
        if (!part.head.empty()) writePrivateFile(folder / "parts" / (stem + ".headers"), part.head);
        writePrivateFile(folder / "parts" / name, part.body);
        const bool document = part.kind == Kind::Document;
        if (part.kind == Kind::Envelope) continue;
        (document ? envelope.documents : envelope.images)
            .push_back({document ? part.documentId : part.tabId, part.fileName,
                        envelope.folder / "parts" / name, part.body.size(), sha256Hex(part.body)});
    }
}

} // namespace

EnvelopeStore::EnvelopeStore(fs::path folder)
    : folder_(std::move(folder)) {
    makePrivateFolder(folder_);
    for (const auto& found : fs::directory_iterator(folder_)) {
        if (found.path().filename().string().starts_with(kUnfinished))
            fs::remove_all(found.path());
        else
            load(found.path());
    }
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry& left, const Entry& right) { return left.sequence < right.sequence; });
    if (!entries_.empty()) sequence_ = entries_.back().sequence;
}

void EnvelopeStore::load(const fs::path& folder) {
    const Json summary = parseJson(readFile(folder / "summary.json").value_or("")).value;
    if (summary.text("envelopeId").empty()) return;
    Entry loaded;
    ReceivedEnvelope& envelope = loaded.envelope;
    envelope.envelopeId = summary.text("envelopeId");
    envelope.transactionId = summary.text("transactionId");
    envelope.status = summary.text("status");
    envelope.statusDateTime = summary.text("statusDateTime");
    envelope.emailSubject = summary.text("emailSubject");
    envelope.multipart = summary.find("multipart") && summary.find("multipart")->asBool();
    envelope.folder = folder;
    envelope.json = readFile(folder / "envelope.json").value_or("");
    for (const Json& file : summary.array("documents"))
        envelope.documents.push_back(fileOf(file, folder));
    for (const Json& file : summary.array("images"))
        envelope.images.push_back(fileOf(file, folder));
    for (const Json& warning : summary.array("warnings"))
        envelope.warnings.push_back(warning.asText());
    loaded.recipients = parseJson(readFile(folder / "recipients.json").value_or("")).value;
    loaded.sequence = summary.find("sequence") ? summary.find("sequence")->asInteger() : 0;
    entries_.push_back(std::move(loaded));
}

ReceivedEnvelope EnvelopeStore::add(const NewEnvelope& source) {
    ReceivedEnvelope envelope;
    envelope.envelopeId = newUuid();
    envelope.transactionId = source.definition.text("transactionId");
    envelope.status = statusOf(source);
    envelope.statusDateTime = nowText();
    envelope.emailSubject = source.definition.text("emailSubject");
    envelope.multipart = source.multipart;
    envelope.folder = folder_ / envelope.envelopeId;
    envelope.json = std::string(source.json);
    envelope.warnings = source.warnings;
    const fs::path unfinished = folder_ / (kUnfinished + envelope.envelopeId);
    makePrivateFolder(unfinished);
    writeParts(source, unfinished, envelope);
    writePrivateFile(unfinished / "request-headers.txt", headersText(*source.request));
    writePrivateFile(unfinished / "envelope.json", source.json);
    writePrivateFile(unfinished / "recipients.json", source.recipients.write(true) + "\n");
    const std::lock_guard lock(mutex_);
    writePrivateFile(unfinished / "summary.json", summaryJson(envelope, ++sequence_).write(true) + "\n");
    fs::rename(unfinished, envelope.folder);
    entries_.push_back({envelope, source.recipients, sequence_});
    return envelope;
}

std::vector<ReceivedEnvelope> EnvelopeStore::all() const {
    const std::lock_guard lock(mutex_);
    std::vector<ReceivedEnvelope> envelopes;
    for (const Entry& known : entries_)
        envelopes.push_back(known.envelope);
    return envelopes;
}

std::optional<std::size_t> EnvelopeStore::indexOf(const std::string& envelopeId) const {
    for (std::size_t index = 0; index < entries_.size(); ++index)
        if (equalsIgnoringCase(entries_[index].envelope.envelopeId, envelopeId)) return index;
    return std::nullopt;
}

void EnvelopeStore::forgetAll() {
    const std::lock_guard lock(mutex_);
    for (const Entry& entry : entries_)
        std::filesystem::remove_all(entry.envelope.folder);
    entries_.clear();
}

std::optional<ReceivedEnvelope> EnvelopeStore::find(const std::string& envelopeId) const {
    const std::lock_guard lock(mutex_);
    const auto index = indexOf(envelopeId);
    return index ? std::optional(entries_[*index].envelope) : std::nullopt;
}

void EnvelopeStore::setStatus(const std::string& envelopeId, const std::string& status) {
    const std::lock_guard lock(mutex_);
    Entry& known = entries_[indexOf(envelopeId).value()];
    ReceivedEnvelope changed = known.envelope;
    changed.status = status;
    changed.statusDateTime = nowText();
    writePrivateFile(changed.folder / "summary.json",
                     summaryJson(changed, known.sequence).write(true) + "\n");
    known.envelope = std::move(changed);
}

Json EnvelopeStore::recipients(const std::string& envelopeId) const {
    const std::lock_guard lock(mutex_);
    return entries_[indexOf(envelopeId).value()].recipients;
}

Answer EnvelopeStore::changeRecipients(const std::string& envelopeId,
                                       const std::function<Answer(Json&)>& change) {
    const std::lock_guard lock(mutex_);
    Entry& known = entries_[indexOf(envelopeId).value()];
    Json changed = known.recipients;
    Answer answer = change(changed);
    if (answer.status >= 400) return answer;
    writePrivateFile(known.envelope.folder / "recipients.json", changed.write(true) + "\n");
    known.recipients = std::move(changed);
    return answer;
}

Answer EnvelopeStore::changeDocuments(const std::string& envelopeId,
                                      const std::function<Answer(std::vector<Document>&)>& change) {
    const std::lock_guard lock(mutex_);
    Entry& known = entries_[indexOf(envelopeId).value()];
    ReceivedEnvelope changed = known.envelope;
    std::vector<Document> documents;
    for (const ReceivedFile& file : changed.documents)
        documents.push_back({file.id, file.name, readFile(file.path).value_or("")});
    Answer answer = change(documents);
    if (answer.status >= 400) return answer;
    const std::vector<ReceivedFile> before = std::exchange(changed.documents, {});
    makePrivateFolder(changed.folder / "documents");
    for (const Document& document : documents) {
        const std::string sha256 = sha256Hex(document.pdf);
        const auto same = std::find_if(before.begin(), before.end(), [&](const ReceivedFile& file) {
            return file.id == document.id && file.sha256 == sha256;
        });
        const fs::path path = same != before.end()
                                  ? same->path
                                  : changed.folder / "documents" / (sha256.substr(0, 16) + ".pdf");
        if (same == before.end()) writePrivateFile(path, document.pdf);
        changed.documents.push_back({document.id, document.name, path, document.pdf.size(), sha256});
    }
    writePrivateFile(changed.folder / "summary.json",
                     summaryJson(changed, known.sequence).write(true) + "\n");
    known.envelope = std::move(changed);
    return answer;
}

fs::path EnvelopeStore::imageFile(const std::string& envelopeId, const std::string& recipientId,
                                  const std::string& type) const {
    return folder_ / lowered(envelopeId) / "images" /
           (sha256Hex(recipientId + "/" + type).substr(0, 16) + ".png");
}

void EnvelopeStore::setImage(const std::string& envelopeId, const std::string& recipientId,
                             const std::string& type, std::string_view bytes) {
    const fs::path file = imageFile(envelopeId, recipientId, type);
    const std::lock_guard lock(mutex_);
    makePrivateFolder(file.parent_path());
    writePrivateFile(file, bytes);
}

std::optional<std::string> EnvelopeStore::image(const std::string& envelopeId, const std::string& recipientId,
                                                const std::string& type) const {
    return readFile(imageFile(envelopeId, recipientId, type));
}

} // namespace norvane::sandbox
