#pragma once

#include "tests/support/KitFixture.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/sdk/NVMCredentials.h>

namespace norvane {

/// Envelopes made by hand, and a signed-in user: José, jose@example.com.
class ModelFixture : public KitFixture {
  protected:
    void signIn() {
        const auto account =
            NVMAccount::withAccessToken("token", "user-1", "José", "jose@example.com", "account-1",
                                        Url::parse("https://service.example/restapi"), "key");
        ASSERT_EQ(NVMCredentials::persistCredentialsForAccount(*account), std::nullopt);
    }

    static std::shared_ptr<NVMSigner> signer(const std::string& id, const std::string& name = "José",
                                             const std::string& email = "jose@example.com",
                                             std::optional<double> order = 1) {
        auto recipient = std::make_shared<NVMSigner>();
        recipient->recipientId = id;
        recipient->routingOrder = order;
        recipient->setNameAndEmail(name, email);
        return recipient;
    }

    static std::shared_ptr<NVMInPersonSigner> inPersonSigner(const std::string& id,
                                                             std::optional<double> order = 1) {
        auto recipient = std::make_shared<NVMInPersonSigner>();
        recipient->recipientId = id;
        recipient->routingOrder = order;
        recipient->hostName = "JOSE";
        recipient->hostEmail = "Jose@Example.com";
        recipient->signerName = "Ann";
        return recipient;
    }

    template <class T>
    static std::shared_ptr<T> tab(const std::string& label, NVMRecipient& owner) {
        auto made = std::make_shared<T>();
        made->tabLabel = label;
        made->recipientId = owner.recipientId;
        return made;
    }

    /// An envelope of these recipients, each with tabs to fill.
    static std::shared_ptr<NVMEnvelopeDefinition> envelopeOf(const RecipientList& recipients) {
        auto envelope = std::make_shared<NVMEnvelopeDefinition>();
        envelope->recipients = std::make_shared<NVMRecipients>();
        for (const auto& recipient : recipients) {
            if (auto* remote = dynamic_cast<NVMSigner*>(recipient.get()))
                remote->tabs = std::make_shared<NVMTabs>();
            if (auto* inPerson = dynamic_cast<NVMInPersonSigner*>(recipient.get()))
                inPerson->tabs = std::make_shared<NVMTabs>();
            envelope->recipients->addRecipient(recipient);
        }
        return envelope;
    }

    static std::vector<std::string> idsOf(const RecipientList& recipients) {
        std::vector<std::string> ids;
        for (const auto& recipient : recipients)
            ids.push_back(recipient->recipientId.value_or(""));
        return ids;
    }
};

} // namespace norvane
