#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMAPIErrorResponse.h>

#include <gtest/gtest.h>

namespace norvane {
namespace {

NVMError serviceError(Value body) {
    NVMError error("NorvaneHTTPStatusErrorDomain", 401, {{"kept", "yes"}});
    error.userInfo.insert_or_assign(std::string(kServiceResponseObjectKey), std::move(body));
    return error;
}

const Value kRefusal =
    Dictionary{{"errorCode", "USER_AUTHENTICATION_FAILED"}, {"message", "Wrong password."}};

TEST(ServiceErrors, TakeTheServicesWordsAndKeepEverythingElse) {
    const NVMError converted = NVM_errorFromServiceResponseError(serviceError(kRefusal), "user.setup");
    EXPECT_EQ(converted.domain, "user.setup");
    EXPECT_EQ(converted.code, 401);
    EXPECT_EQ(converted.localizedDescription(), "Wrong password.");
    EXPECT_EQ(converted.failureReason(), "USER_AUTHENTICATION_FAILED");
    EXPECT_EQ(converted.userInfo.at("kept"), Value("yes"));
    EXPECT_EQ(converted.userInfo.at("NVESResponseObject"), kRefusal);
}

TEST(ServiceErrors, WithoutADecodedBodyKeepTheirInformationAsItIs) {
    const NVMError incoming("NorvaneTransportErrorDomain", 7, {{"cause", "refused"}});
    EXPECT_EQ(NVM_errorFromServiceResponseError(incoming, "user.setup"),
              NVMError("user.setup", 7, incoming.userInfo));
}

TEST(ServiceErrors, OfAdditionalDataAreWrapped) {
    const NVMError withBody = NVM_errorFromAdditionalDataFetchForAccountError(serviceError(kRefusal));
    EXPECT_EQ(withBody.domain, "user.additional.data.fetch.error");
    EXPECT_EQ(withBody.localizedDescription(), "Unable to fetch additional data for user - Wrong password.");
    EXPECT_EQ(withBody.failureReason(), "USER_AUTHENTICATION_FAILED");
    EXPECT_EQ(withBody.userInfo.at("kept"), Value("yes"));

    const NVMError bare = NVM_errorFromAdditionalDataFetchForAccountError(serviceError("<html>"));
    EXPECT_EQ(bare.code, 401);
    EXPECT_EQ(bare.failureReason(), "USER_ADDITIONAL_DATA_FETCH_ERROR");
    EXPECT_EQ(bare.userInfo.size(), 2u) << "nothing but description and reason";
}

TEST(ErrorResponse, OfAKitErrorIsItsDomainAndDescription) {
    const NVMError error = NVM_errorTemplateHasNoDocuments();
    EXPECT_EQ(NVMAPIErrorResponseOf(error),
              NVMAPIErrorResponse("template.save.error", "Template has no documents."));
    EXPECT_EQ(NVMAPIErrorResponseCode(error), "template.save.error");
}

TEST(ErrorResponse, IsTheFirstRecordListedWithTheError) {
    const auto record = std::make_shared<NVMAPIErrorResponse>("LOCKED", "Somebody else edits it.");
    NVMError error = NVM_errorInvalidInput();
    error.userInfo["RKObjectMapperErrorObjectsKey"] = Array{"other", Value::object(record)};
    EXPECT_EQ(NVMAPIErrorResponseMessage(error), "Somebody else edits it.");
    error.userInfo["RKObjectMapperErrorObjectsKey"] = Array{"other"};
    EXPECT_EQ(NVMAPIErrorResponseOf(error), std::nullopt);
}

TEST(Errors, NameWhatIsMissing) {
    const NVMError tabs = NVM_errorTemplateHasUnsupportedTabTypes({"zipTabs", "noteTabs"}, std::nullopt);
    EXPECT_EQ(tabs.userInfo.at("RecipientName"), Value("(null)"));
    EXPECT_EQ(tabs.userInfo.at("UnsupportedTabs"), Value(Array{"zipTabs", "noteTabs"}));
    EXPECT_EQ(NVM_errorTemplateHasInvalidFormula("[a]+", "Total").localizedDescription(),
              "The formula for tab: Total is invalid. Formula = [a]+ is not a valid field.");
    EXPECT_EQ(NVM_errorEnvelopeHasInvalidDefaultsForTabLabels(std::nullopt).userInfo.at("tabLabels"),
              Value("-no-tab-labels-or-ids-found-"));
    EXPECT_EQ(NVM_errorCacheTemplateHasUnsupportedSupplementalDocument().domain, "");
}

} // namespace
} // namespace norvane
