#pragma once

#include "tests/store/StoreFixture.h"
#include "tests/support/Event.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/StoreErrors.h>

#include <functional>

namespace norvane {

/// Envelopes made by hand, for a store with nobody signed in: nobody signs on this device.
class EnvelopeFixture : public StoreFixture {
  protected:
    static std::shared_ptr<NVMDocument> document(const std::string& id, const std::string& bytes) {
        auto made = std::make_shared<NVMDocument>();
        made->documentId = id;
        made->order = id;
        made->name = "document " + id;
        if (!bytes.empty()) made->pdf = Data(bytes);
        return made;
    }
    static std::shared_ptr<NVMSigner> signer(const std::string& id) {
        auto made = std::make_shared<NVMSigner>();
        made->recipientId = id;
        made->setNameAndEmail("Ann " + id, "ann@example.com");
        made->routingOrder = 1;
        made->tabs = std::make_shared<NVMTabs>();
        auto text = std::make_shared<NVMText>();
        text->tabId = "tab-" + id;
        text->documentId = "1";
        text->value = "value";
        made->tabs->textTabs.emplace().push_back(text);
        return made;
    }
    static NVMEnvelopeDefinition envelope(const std::string& status = "sent") {
        NVMEnvelopeDefinition made;
        made.status = status;
        made.emailSubject = "Please sign";
        made.envelopeTemplateDefinition = std::make_shared<NVMEnvelopeTemplateDefinition>();
        made.envelopeTemplateDefinition->templateId = "template-1";
        made.documents.emplace().push_back(document("1", "%PDF one"));
        made.recipients = std::make_shared<NVMRecipients>();
        made.recipients->addRecipient(signer("1"));
        return made;
    }
    /// The error that an asynchronous operation completes with.
    static Failure result(const std::function<void(NVMEnvelopesHandler::Completion)>& start) {
        Event ended;
        Failure failure;
        start([&](Failure error) {
            failure = std::move(error);
            ended.set();
        });
        EXPECT_TRUE(ended.wait());
        return failure;
    }
    static Failure updated(const std::function<void(NVMEnvelopesHandler::EnvelopeCompletion)>& start,
                           std::shared_ptr<NVMEnvelopeDefinition>* envelope = nullptr) {
        return result([&](NVMEnvelopesHandler::Completion completion) {
            start([=](std::shared_ptr<NVMEnvelopeDefinition> stored, Failure error) {
                if (envelope) *envelope = std::move(stored);
                completion(std::move(error));
            });
        });
    }
    /// Caches it and gives the identifier that it waits under.
    static std::string cached(const NVMEnvelopeDefinition& envelope) {
        const auto before = NVMEnvelopesHandler::cachedEnvelopeSummaries().size();
        const auto error = result(
            [&](auto completion) { NVMEnvelopesHandler::cacheEnvelope(envelope, std::move(completion)); });
        EXPECT_EQ(error, std::nullopt) << error->localizedDescription();
        const auto summaries = NVMEnvelopesHandler::cachedEnvelopeSummaries();
        EXPECT_EQ(summaries.size(), before + 1);
        return summaries.empty() ? "" : summaries.back().envelopeId.value_or("");
    }
    static std::shared_ptr<NVMCDEnvelopeDefinition> stored(const std::string& id) {
        return NVMEnvelopesHandler::findEnvelopeWithId(id, context());
    }
    static std::size_t position(const std::vector<std::string>& names, std::string_view name) {
        return static_cast<std::size_t>(std::find(names.begin(), names.end(), name) - names.begin());
    }
};

} // namespace norvane
