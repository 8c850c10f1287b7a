#include "tests/support/KitFixture.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/RecordJson.h>
#include <norvane/model/NVMCustomFields.h>
#include <norvane/platform/Json.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/templates/NVMTemplatesManager.h>
#include <norvane/templates/TemplateRules.h>

namespace norvane {
namespace {

/// Templates of one signer, with one member changed.
class TemplateRulesTest : public KitFixture {
  protected:
    static Dictionary signer(Dictionary changes = {}, Dictionary tabChanges = {}) {
        Dictionary tab{{"tabLabel", "Sign"}, {"documentId", "1"}};
        tab.merge(tabChanges);
        Dictionary made{{"recipientId", "1"},
                        {"roleName", "Tenant"},
                        {"tabs", Dictionary{{"signHereTabs", Array{std::move(tab)}}}}};
        for (auto& [key, value] : changes)
            made.insert_or_assign(key, value);
        return made;
    }
    static std::shared_ptr<NVESEnvelopeTemplate> made(Dictionary lists, double pages = 2,
                                                      Dictionary document = {}) {
        document.emplace("documentId", "1");
        lists.emplace("recipientCount", "1");
        const Dictionary json{{"envelopeTemplateDefinition", Dictionary{{"pageCount", pages}}},
                              {"documents", Array{std::move(document)}},
                              {"recipients", std::move(lists)}};
        return *readRecord<NVESEnvelopeTemplate>(writeJson(json));
    }
    static std::shared_ptr<NVESEnvelopeTemplate> ofSigner(Dictionary one) {
        return made({{"signers", Array{std::move(one)}}});
    }
    static std::shared_ptr<NVESEnvelopeTemplate> ofInPersonSigner(Dictionary one) {
        return made({{"inPersonSigners", Array{std::move(one)}}});
    }

    static Failure caching(const std::shared_ptr<NVESEnvelopeTemplate>& wire) {
        Failure error;
        const bool canCache = NVMTemplatesHandler::canCacheEnvelopeTemplate(*wire, &error);
        EXPECT_EQ(canCache, !error);
        return error;
    }
    static std::string reason(const Failure& error) { return error ? error->failureReason() : ""; }
    static std::string cachingReason(const std::shared_ptr<NVESEnvelopeTemplate>& wire) {
        return reason(caching(wire));
    }
    static std::string onlineReason(const std::shared_ptr<NVESEnvelopeTemplate>& wire) {
        Failure error;
        NVMTemplatesHandler::canOnlineSignEnvelopeTemplate(*wire, &error);
        return reason(error);
    }
};

TEST_F(TemplateRulesTest, AcceptAPlainTemplate) { EXPECT_EQ(caching(ofSigner(signer())), std::nullopt); }

TEST_F(TemplateRulesTest, WantPagesAndRecipients) {
    EXPECT_EQ(cachingReason(made({{"signers", Array{signer()}}}, 0)), "TEMPLATE_ERROR_NO_DOCUMENT");
    EXPECT_EQ(cachingReason(made({{"recipientCount", "0"}})), "TEMPLATE_ERROR_NO_RECIPIENT");
    EXPECT_EQ(cachingReason(ofSigner(signer({{"tabs", Dictionary{}}}))), "TEMPLATE_HAS_FREEFORM_SIGNERS");
}

TEST_F(TemplateRulesTest, RefuseSupplementsWithAnErrorWithoutDomain) {
    const auto wire = made({{"signers", Array{signer()}}}, 1, {{"display", "inline"}});
    const Failure error = caching(wire);
    EXPECT_EQ(reason(error), "TEMPLATE_HAS_UNSUPPORTED_SUPPLEMENTAL_DOCUMENTS");
    EXPECT_EQ(error->domain, "");
    EXPECT_EQ(onlineReason(wire), "TEMPLATE_HAS_UNSUPPORTED_SUPPLEMENTAL_DOCUMENTS");
}

TEST_F(TemplateRulesTest, RefuseForbiddenAttributesOffline) {
    EXPECT_EQ(caching(ofSigner(signer({{"requireSignOnPaper", "false"}}))), std::nullopt);
    const Failure error = caching(ofSigner(signer({{"requireSignOnPaper", "true"}, {"name", "Ann"}})));
    EXPECT_EQ(reason(error), "TEMPLATES_ERROR_RECIPIENT_ATTRIBUTES");
    EXPECT_EQ(error->userInfo.at("UnsupportedAttributes"), Value(Array{"requireSignOnPaper"}));
    EXPECT_EQ(error->userInfo.at("RecipientName"), Value("Ann"));

    const auto secured = ofSigner(signer({{"accessCode", "1234"}, {"signingGroupName", "Board"}}));
    EXPECT_EQ(caching(secured)->userInfo.at("UnsupportedAttributes"),
              Value(Array{"accessCode", "signingGroupName"}));
    EXPECT_EQ(onlineReason(secured), "TEMPLATES_ERROR_RECIPIENT_ATTRIBUTES");
    EXPECT_EQ(onlineReason(ofSigner(signer({{"accessCode", "1234"}}))), "");
}

TEST_F(TemplateRulesTest, RefuseAnchorsOfflineOnly) {
    const auto anchored = ofSigner(signer({}, {{"anchorString", "Sign here:"}}));
    const Failure error = caching(anchored);
    EXPECT_EQ(reason(error), "TEMPLATES_ERROR_RECIPIENT_TAB_ATTRIBUTES");
    EXPECT_EQ(error->userInfo.at("UnsupportedAttributes"), Value(Array{"anchorString"}));
    EXPECT_EQ(onlineReason(anchored), "");
    EXPECT_EQ(onlineReason(ofSigner(signer({}, {{"stampType", "stamp"}}))),
              "TEMPLATES_ERROR_RECIPIENT_TAB_ATTRIBUTES");
}

TEST_F(TemplateRulesTest, LookAtTheObjectsOfNumberTabsToo) {
    Dictionary tabs{{"numberTabs", Array{Dictionary{{"isPaymentAmount", "true"}}}}};
    const auto paying = ofSigner(signer({{"tabs", std::move(tabs)}}));
    EXPECT_EQ(caching(paying)->userInfo.at("UnsupportedTabs"), Value(Array{"numberTabs"}));
    EXPECT_EQ(onlineReason(paying), "TEMPLATES_ERROR_RECIPIENT_TAB_ATTRIBUTES");
}

TEST_F(TemplateRulesTest, WantInPersonSignersToBeRolesAlone) {
    EXPECT_EQ(caching(ofInPersonSigner(signer())), std::nullopt);
    EXPECT_EQ(cachingReason(ofInPersonSigner(signer({{"signerName", "Ann"}}))),
              "TEMPLATE_ERROR_INPERSON_ONLY_ROLE_ALLOWED");
    EXPECT_EQ(cachingReason(ofInPersonSigner(signer({{"roleName", ""}}))),
              "TEMPLATE_ERROR_INPERSON_MISSING_ROLE");
    EXPECT_EQ(cachingReason(ofSigner(signer({{"roleName", nullptr}, {"name", "Ann"}}))),
              "TEMPLATE_RECIPIENT_ROLENAME_MISSING");
    EXPECT_EQ(
        cachingReason(ofSigner(signer({{"roleName", nullptr}, {"name", "Ann"}, {"email", "a@example.com"}}))),
        "");
}

TEST_F(TemplateRulesTest, WantRecipientsOfOneRoleToBeAlike) {
    const auto pair = [](Dictionary first, Dictionary second) {
        return made({{"signers", Array{std::move(first), std::move(second)}}});
    };
    EXPECT_EQ(cachingReason(pair(signer(), signer({{"recipientId", "2"}}))), "");
    EXPECT_EQ(cachingReason(pair(signer({{"email", "a@example.com"}}), signer({{"email", "b@example.com"}}))),
              "TEMPLATE_CONFLICTING_ROLE_NAME");
    EXPECT_EQ(cachingReason(made({{"signers", Array{signer()}}, {"inPersonSigners", Array{signer()}}})),
              "TEMPLATE_CONFLICTING_ROLE_NAME");
}

TEST_F(TemplateRulesTest, WantAValueInEveryRequiredCustomField) {
    auto wire = ofSigner(signer());
    EXPECT_EQ(anyCustomFieldWithoutValue(*wire, nullptr), std::nullopt);
    wire->customFields = *readRecord<NVESCustomFields>(
        R"({"textCustomFields":[{"name":"Branch","required":"true"},{"name":"Note","required":"false"}]})");
    EXPECT_EQ(reason(anyCustomFieldWithoutValue(*wire, nullptr)),
              "TEMPLATE_HAS_UNSUPPORTED_TEXT_CUSTOMFIELDS");
    NVMCustomFields given;
    given.textCustomFields.emplace().push_back(std::make_shared<NVMTextCustomField>());
    given.textCustomFields->front()->name = "Branch";
    EXPECT_TRUE(anyCustomFieldWithoutValue(*wire, &given));
    given.textCustomFields->front()->value = "North";
    EXPECT_EQ(anyCustomFieldWithoutValue(*wire, &given), std::nullopt);
}

TEST_F(TemplateRulesTest, OfTheManagerNeedASignedInKitAndNameCertificates) {
    const auto wire = ofSigner(signer({{"requireSignerCertificate", "true"}}));
    Failure error;
    EXPECT_FALSE(NVMTemplatesManager().canCacheEnvelopeTemplate(*wire, &error));
    EXPECT_EQ(reason(error), "SDK_SETUP_ERROR");
    NVM_setupSuccessful(true);
    NVM_loginSuccessful(true);
    EXPECT_FALSE(NVMTemplatesManager().canCacheEnvelopeTemplate(*wire, &error));
    EXPECT_EQ(reason(error), "TEMPLATES_ERROR_DIGITAL_CERTIFICATE");
    EXPECT_TRUE(NVMTemplatesManager().canCacheEnvelopeTemplate(*ofSigner(signer()), nullptr));
    NVM_clearCredentialsAndCachedTemplatesSuccessful(true);
}

} // namespace
} // namespace norvane
