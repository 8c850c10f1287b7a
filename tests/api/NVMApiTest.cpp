#include "tests/api/ApiFixture.h"

#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/NVESTemplatesApi.h>
#include <norvane/api/NVESViews.h>
#include <norvane/api/NVMApi.h>
#include <norvane/api/RecordJson.h>
#include <norvane/platform/NVMException.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMAccount.h>
#include <norvane/sdk/NVMCredentials.h>

namespace norvane {
namespace {

class Api : public ApiFixture {
  protected:
    void signIn() {
        const auto account =
            NVMAccount::withApiPassword("pass", "user-1", "User", "u@x.y", "a 1", baseURL(), "key");
        ASSERT_FALSE(NVMCredentials::persistCredentialsForAccount(*account));
    }

    /// A completion of any type; `sent` waits for it.
    auto done() {
        return [event = done_](auto&&, auto&&) { event->set(); };
    }
    /// Method and target of the request that was just started.
    std::string sent() {
        EXPECT_TRUE(done_->wait(++count_));
        const ReceivedRequest request = lastRequest();
        return request.method() + " " + request.target();
    }

    const std::shared_ptr<Event> done_ = std::make_shared<Event>();
    int count_ = 0;
};

TEST_F(Api, ReachesEachOperationOfTheService) {
    signIn();
    const std::string account = " /restapi/v2/accounts/a%201";
    NVMApi::getAccountForAccountId("a 1", done());
    EXPECT_EQ(sent(), "GET" + account);
    NVMApi::getAccountSettingsForAccountId("a 1", done());
    EXPECT_EQ(sent(), "GET" + account + "/settings");
    NVMApi::getUserSettingsForAccountId("a 1", "u", done());
    EXPECT_EQ(sent(), "GET" + account + "/users/u/settings");
    NVMApi::getConsumerDisclosureForAccountId("a 1", done());
    EXPECT_EQ(sent(), "GET" + account + "/consumer_disclosure");
    NVESFoldersApi_ListOptions folders;
    folders.template_ = "include";
    NVMApi::getFoldersWithOptions(folders, done());
    EXPECT_EQ(sent(), "GET" + account + "/folders?template=include");
    NVMApi::getTemplatesWithCompletion(done());
    EXPECT_EQ(sent(), "GET" + account + "/templates");
    NVESTemplatesApi_ListTemplatesOptions templates;
    templates.searchText = "a&b";
    templates.startPosition = "10";
    NVMApi::getTemplatesWithOptions(templates, done());
    EXPECT_EQ(sent(), "GET" + account + "/templates?search_text=a%26b&start_position=10");
    NVMApi::getTemplateWithId("t", done());
    EXPECT_EQ(sent(), "GET" + account + "/templates/t");
    NVMApi::getDocumentForTemplateId("t", "3", done());
    EXPECT_EQ(sent(), "GET" + account + "/templates/t/documents/3");
    NVMApi::getCombinedDocumentForTemplateId("t", done());
    EXPECT_EQ(sent(), "GET" + account + "/templates/t/documents/combined");
    NVESEnvelopesApi_ListStatusChangesOptions changes;
    changes.transactionIds = "t1,t2";
    NVMApi::listStatusChangesWithOptions(changes, done());
    EXPECT_EQ(sent(), "GET" + account + "/envelopes?transaction_ids=t1%2Ct2");

    NVESEnvelopeDefinition definition;
    definition.emailSubject = "s";
    NVMApi::createEnvelopeWithEnvelopeDefinition(definition, done());
    EXPECT_EQ(sent(), "POST" + account + "/envelopes");
    EXPECT_EQ(lastRequest().body, R"({"emailSubject":"s"})");
    EXPECT_EQ(lastRequest().header("Content-Type"), "application/json");
    NVMApi::createOfflineEnvelopeWithEnvelopeDefinition(definition, done());
    EXPECT_EQ(sent(), "POST" + account + "/envelopes");
    EXPECT_EQ(definition.DisableResponsiveDocument, "true");
    NVMApi::getRecipientsForEnvelopeWithEnvelopeId("e", done());
    EXPECT_EQ(sent(), "GET" + account + "/envelopes/e/recipients");
    NVESRecipients recipients;
    recipients.recipientCount = "0";
    NVMApi::addRecipientsToEnvelopeWithId("e", recipients, {}, done());
    EXPECT_EQ(sent(), "POST" + account + "/envelopes/e/recipients");
    NVMApi::deleteRecipientsFromEnvelopeWithId("e", recipients, {}, done());
    EXPECT_EQ(sent(), "DELETE" + account + "/envelopes/e/recipients");
    EXPECT_EQ(lastRequest().body, R"({"recipientCount":"0"})");
    NVMApi::addTabsToRecipientWithId("r", "e", NVESTabs(), done());
    EXPECT_EQ(sent(), "POST" + account + "/envelopes/e/recipients/r/tabs");
    NVMApi::getRecipientViewForRecipient(NVESRecipientViewRequest(), "e", done());
    EXPECT_EQ(sent(), "POST" + account + "/envelopes/e/views/recipient");
    NVMApi::setImageToRecipientWithId("r", "e", Data("\x89PNG", 4), "signature_image", done());
    EXPECT_EQ(sent(), "PUT" + account + "/envelopes/e/recipients/r/signature_image");
    EXPECT_EQ(lastRequest().header("Content-Type"), "image/png");
    NVMApi::getSignatureForRecipientWithId("r", "e", done());
    EXPECT_EQ(sent(), "GET" + account + "/envelopes/e/recipients/r/signature");
}

TEST_F(Api, CallsWhateverTheTableDescribes) {
    signIn();
    for (const NVESOperation& operation : serviceOperations()) {
        const std::string qualified = std::string(operation.service) + "." + std::string(operation.name);
        SCOPED_TRACE(qualified);
        EXPECT_EQ(serviceOperationsNamed(qualified), std::vector{&operation});
        if (!operation.facade.empty()) {
            EXPECT_EQ(serviceOperationsNamed(operation.facade), std::vector{&operation});
        }
        for (const std::string_view record : {operation.result, operation.body})
            EXPECT_EQ(wireRecordType(record) != nullptr, record.starts_with("NVES")) << record;

        NVESOperationArguments arguments;
        std::string target = std::string(operation.method) + " /restapi" + std::string(operation.path);
        for (const std::string_view name : operation.requiredParameters()) {
            const std::string value = name == "accountId" ? "a 1" : std::string(name);
            if (name != "accountId") arguments.parameters.emplace(name, value);
            const std::string placeholder = "{" + std::string(name) + "}";
            target.replace(target.find(placeholder), placeholder.size(),
                           name == "accountId" ? "a%201" : value);
        }
        for (const std::string& name : operation.queryParameters())
            arguments.parameters.emplace(name, "1");
        if (!operation.body.empty()) {
            EXPECT_THROW(NVMApi::callOperation(operation, arguments, done()), NVMException) << "no body";
            arguments.body = Data(std::string("{}"));
        }
        NVMApi::callOperation(operation, arguments, done());
        const std::string request = sent();
        EXPECT_EQ(request.substr(0, request.find('?')), target);
        for (const std::string& name : operation.queryParameters())
            EXPECT_NE(request.find(name + "=1"), std::string::npos) << request;
        if (!operation.body.empty() && operation.contentType.empty()) {
            EXPECT_EQ(lastRequest().body, "{}");
        }
        arguments.parameters.emplace("surprise", "1");
        EXPECT_THROW(NVMApi::callOperation(operation, arguments, done()), NVMException);
    }
    EXPECT_EQ(serviceOperationsNamed("get").front()->service, "NVESTemplatesApi") << "the facade's";
    EXPECT_EQ(serviceOperationsNamed("getLock").size(), 2u);
    EXPECT_TRUE(serviceOperationsNamed("").empty());
}

TEST_F(Api, ProvesTheAccountWithoutEscapingItsValues) {
    signIn();
    NVMApi::getTemplatesWithCompletion(done());
    sent();
    EXPECT_EQ(lastRequest().header("X-Norvane-Authentication"),
              R"({"Username":"user-1","Password":"pass","IntegratorKey":"key"})");
    EXPECT_FALSE(lastRequest().header("Authorization"));

    const auto account = NVMAccount::withAccessToken("tok", "u", "User", "u@x.y", "a", baseURL(), "ke\"y");
    ASSERT_FALSE(NVMCredentials::persistCredentialsForAccount(*account));
    EXPECT_EQ(NVMApi::setUpHeaders(),
              (Dictionary{{"Authorization", "Bearer tok"},
                          {"X-Norvane-Authentication", R"({"IntegratorKey":"ke"y"})"}}));
}

TEST_F(Api, SignsInWithThePasswordAsJson) {
    answerWith(ServerReply::with(200, R"({"loginAccounts":[{"accountId":"7"}],"apiPassword":"p"})"));
    std::shared_ptr<NVESLoginInformation> information;
    NVMApi::loginWithUserId("u", "p\"w", "k", baseURL(), [&, mark = done()](auto result, auto error) {
        information = result;
        mark(result, error);
    });
    EXPECT_EQ(sent(), "GET /restapi/v2/login_information?api_password=true&include_account_id_guid=true");
    EXPECT_EQ(lastRequest().header("X-Norvane-Authentication"),
              R"({"Username":"u","Password":"p\"w","IntegratorKey":"k"})");
    EXPECT_EQ(information->loginAccounts->at(0)->accountId, "7");
}

TEST_F(Api, TellsASignedOutCallerSo) {
    std::optional<NVMError> failure;
    NVMApi::getTemplatesWithCompletion([&, mark = done()](auto result, auto error) {
        failure = error;
        mark(result, error);
    });
    ASSERT_TRUE(done_->wait());
    EXPECT_EQ(failure->domain, NVM_USER_NOT_LOGGED_IN_ERROR);
    EXPECT_TRUE(NVMApi::setUpHeaders().empty());
}

TEST_F(Api, ThrowsForAMissingRequiredParameter) {
    try {
        NVESTemplatesApi(client()).listTemplatesWithCompletionBlock(std::nullopt, {}, nullptr);
        FAIL();
    } catch (const NVMException& exception) {
        EXPECT_EQ(exception.name(), "Invalid parameter");
        EXPECT_EQ(exception.reason(),
                  "Missing the required parameter `accountId` when calling `listTemplates`");
    }
    EXPECT_TRUE(server_->requests().empty());
}

} // namespace
} // namespace norvane
