#include "EnvelopeRecordCommands.h"

#include "Commands.h"
#include "TextFile.h"

#include <norvane/model/mapping/EnvelopeJson.h>
#include <norvane/platform/Json.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>

#include <CLI/CLI.hpp>

namespace norvane::cli {

namespace {

// Showing.

Result<std::shared_ptr<NVMCDEnvelopeDefinition>> storedEnvelope(const std::string& id) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return envelopeNotFound(id);
    const auto& context = store->defaultContext();
    for (const std::string_view column : {"envelopeId", "transactionId"}) {
        const auto found = context.fetchIDs(
            NVMCDEnvelopeDefinition::fetchRequest().where(column, FetchRequest::Match::Equal, id).limitTo(1));
        if (!found) return found.error();
        if (found->empty()) continue;
        auto envelope = context.objectWithID<NVMCDEnvelopeDefinition>(found->front());
        if (!envelope || *envelope) return envelope;
    }
    return envelopeNotFound(id);
}

/// The bytes that the record would merely lack are an error here.
Failure verifyDocuments(const NVMCDEnvelopeDefinition& stored) {
    if (!stored.documents) return std::nullopt;
    for (const auto& document : *stored.documents) {
        if (!document->sandboxFilePath) continue;
        const std::string name = document->name.value_or(document->documentId.value_or(""));
        if (auto error = NVM_verifyDocumentWithPath(*document->sandboxFilePath, document->_sha256, name))
            return error;
    }
    return std::nullopt;
}

std::vector<std::string> linesOf(const NVMEnvelopeDefinition& envelope) {
    std::vector<std::string> lines = {envelope.envelopeId.value_or("-") + "  " +
                                      envelope.status.value_or("-") + "  " +
                                      envelope.emailSubject.value_or("")};
    for (const auto& document : envelope.allDocuments())
        lines.push_back("document " + document->documentId.value_or("-") + "  " +
                        document->name.value_or(""));
    if (envelope.recipients)
        for (const auto& recipient : envelope.recipients->allRecipients())
            lines.push_back("recipient " + recipient->recipientId.value_or("-") + "  " +
                            recipient->nvm_name() + (recipient->signedDateTime ? "  signed" : ""));
    if (envelope.syncFailureReason) lines.push_back("last failure: " + *envelope.syncFailureReason);
    return lines;
}

void show(Context& context, const std::string& id) {
    if (context.failed(openKit())) return;
    const auto stored = storedEnvelope(id);
    if (context.failed(stored ? verifyDocuments(**stored) : Failure(stored.error()))) return;
    const NVMEnvelopeDefinition envelope(**stored, true);
    context.output().result(valuesFromEnvelope(envelope), linesOf(envelope));
}

// Importing.

/// A document that names a file of this machine brings that file's bytes; paths are relative to the folder.
Failure readFile(NVMDocument& document, const std::filesystem::path& folder) {
    if (!document.sandboxFilePath) return std::nullopt;
    const std::filesystem::path file = std::filesystem::absolute(folder / *document.sandboxFilePath);
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) return std::nullopt; // the kit's own, or missing
    auto bytes = Platform::current().files->read(file);
    if (!bytes) return bytes.error();
    document.pdf = *std::move(bytes);
    document.sandboxFilePath.reset();
    return std::nullopt;
}

Result<std::shared_ptr<NVMEnvelopeDefinition>> readEnvelope(const std::filesystem::path& file) {
    const auto text = readTextFile(file);
    if (!text) return text.error();
    const auto document = parseJson(*text);
    if (!document) return document.error();
    if (!document->isDictionary())
        return NVMError::make("norvane.command", 0, "The file must hold an object.", "ENVELOPE_FILE_INVALID");
    Dictionary values = *document->asDictionary();
    // What "norvane query" reads beside the envelope is no part of it.
    values.erase("account");
    values.erase("config");
    auto envelope = envelopeFromValues(values);
    if (!envelope || !(*envelope)->documents) return envelope;
    for (const auto& each : *(*envelope)->documents)
        if (Failure failure = readFile(*each, file.parent_path())) return *std::move(failure);
    return envelope;
}

void import(Context& context, const std::filesystem::path& file) {
    if (context.failed(openKit())) return;
    const auto envelope = readEnvelope(file);
    if (!envelope) {
        context.failed(envelope.error());
        return;
    }
    // The identifiers are the store's to give; the notification, which comes before the completion, tells.
    const Answer<std::string> identifier;
    const auto observer = Platform::current().notifications->addObserver(
        std::string(NVMEnvelopeCachedNotification), [identifier](const Notification& notification) {
            const auto found = notification.userInfo.find(NVMEnvelopeIdKey);
            if (found != notification.userInfo.end())
                identifier.give(found->second.stringValue().value_or(""));
        });
    const Answer<Failure> cached;
    NVMEnvelopesHandler::cacheEnvelope(**envelope, [cached](Failure failure) { cached.give(failure); });
    if (context.failed(cached.wait())) return;
    const std::string id = identifier.wait();
    context.output().result(Dictionary{{"envelopeId", id}, {"transactionId", id}},
                            {"envelopeId " + id, "transactionId " + id});
}

} // namespace

NVMError envelopeNotFound(const std::string& id) {
    return NVMError::make("norvane.command", 0, "No envelope " + id + " on this device.",
                          "ENVELOPE_NOT_FOUND");
}

void addEnvelopeRecordCommands(CLI::App& envelopes, Context& context) {
    auto id = std::make_shared<std::string>();
    auto* showCommand = envelopes.add_subcommand(
        "show", "One of them; with --json the whole record, in the form that \"query\" reads");
    showCommand->add_option("ID", *id, "Envelope or transaction id")->required();
    showCommand->callback([&context, id] { show(context, *id); });

    auto file = std::make_shared<std::filesystem::path>();
    auto* importCommand =
        envelopes.add_subcommand("import", "Caches the envelope of a JSON file and prints its ids");
    importCommand
        ->add_option("FILE", *file,
                     "The envelope, in the form that \"query\" reads; the \"sandboxFilePath\" of a document "
                     "may name a PDF, relative to the file")
        ->required();
    importCommand->callback([&context, file] { import(context, *file); });
}

} // namespace norvane::cli
