#include "src/api/MultipartBody.h"
#include "tests/api/ApiFixture.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESEnvelopesApi.h>
#include <norvane/platform/NVMException.h>

#include <fstream>

namespace norvane {
namespace {

template <class T>
field::List<T> listOf(std::shared_ptr<T> element) {
    return std::vector{std::move(element)};
}

class OfflineEnvelope : public ApiFixture {
  protected:
    std::shared_ptr<NVESDocument> document(const char* id, const std::filesystem::path& file) {
        auto made = std::make_shared<NVESDocument>();
        made->documentId = id;
        made->fileSandboxURL.text = Url::fromFilePath(file.string()).absoluteString();
        return made;
    }

    /// Two documents; a signer with a signature, an in-person signer with initials and an empty signature.
    NVESEnvelopeDefinition definition() {
        NVESEnvelopeDefinition made;
        made.documents = std::vector{document("1", home_.file("one.PDF", "%PDF-1")),
                                     document("2", home_.file("two \"2\".odd", "two"))};
        made.recipients = std::make_shared<NVESRecipients>();
        auto signer = std::make_shared<NVESSigner>();
        signer->tabs = std::make_shared<NVESTabs>();
        auto signHere = std::make_shared<NVESSignHere>();
        signHere->tabId = "17";
        signHere->imageDataBase64 = "iVBO\nRw==";
        signer->tabs->signHereTabs = listOf(signHere);
        made.recipients->signers = listOf(signer);
        auto inPerson = std::make_shared<NVESInPersonSigner>();
        inPerson->tabs = std::make_shared<NVESTabs>();
        auto initials = std::make_shared<NVESInitialHere>();
        initials->tabId = "18";
        initials->imageDataBase64 = "SU5J";
        auto empty = std::make_shared<NVESSignHere>();
        empty->tabId = "19";
        empty->imageDataBase64 = "";
        inPerson->tabs->initialHereTabs = listOf(initials);
        inPerson->tabs->signHereTabs = listOf(empty);
        made.recipients->inPersonSigners = listOf(inPerson);
        return made;
    }

    Outcome upload(NVESEnvelopeDefinition& envelope) {
        std::shared_ptr<NVESEnvelopeSummary> summary;
        return wait([&](NVESCompletion completion) {
            NVESEnvelopesApi(client()).createOfflineEnvelopeWithCompletionBlock(
                "a1", envelope, [completion](auto result, auto error) {
                    completion(result ? NVESResult(result->type(), result) : NVESResult(), error);
                });
        });
    }
};

TEST_F(OfflineEnvelope, TravelsAsOneFormOfJsonDocumentsAndImages) {
    answerWith(ServerReply::with(201, R"({"envelopeId":"e1"})"));
    NVESEnvelopeDefinition envelope = definition();
    const auto outcome = upload(envelope);
    EXPECT_EQ(outcome.result.record<NVESEnvelopeSummary>()->envelopeId, "e1");
    EXPECT_FALSE(envelope.documents->at(0)->fileSandboxURL.text);
    EXPECT_FALSE(envelope.recipients->signers->at(0)->tabs->signHereTabs->at(0)->imageDataBase64);

    const ReceivedRequest request = lastRequest();
    EXPECT_EQ(request.method() + " " + request.target(), "POST /restapi/v2/accounts/a1/envelopes");
    const std::string type = *request.header("Content-Type");
    constexpr std::string_view kType = "multipart/form-data; boundary=";
    ASSERT_TRUE(type.starts_with(kType)) << type;
    const std::string line = "--" + type.substr(kType.size());
    EXPECT_EQ(
        request.body,
        line +
            "\r\nContent-Disposition: form-data; name=\"(null)\"\r\nContent-Type: application/json\r\n\r\n"
            R"({"documents":[{"documentId":"1"},{"documentId":"2"}],"recipients":{)"
            R"("signers":[{"tabs":{"signHereTabs":[{"tabId":"17"}]}}],"inPersonSigners":[{"tabs":{)"
            R"("signHereTabs":[{"tabId":"19","imageDataBase64":""}],"initialHereTabs":[{"tabId":"18"}]}}]}})"
            "\r\n" +
            line +
            "\r\nContent-Disposition: form-data; name=\"documentId-1\"; filename=\"one.PDF\"; "
            "documentId=\"1\""
            "\r\nContent-Type: application/pdf\r\n\r\n%PDF-1\r\n" +
            line +
            "\r\nContent-Disposition: form-data; name=\"documentId-2\"; filename=\"two %222%22.odd\"; "
            "documentId=\"2\"\r\nContent-Type: application/octet-stream\r\n\r\ntwo\r\n" +
            line +
            "\r\nContent-Disposition: form-data; tabId=\"17\"\r\nContent-Type: image/png\r\n\r\n\x89PNG\r\n" +
            line +
            "\r\nContent-Disposition: form-data; tabId=\"18\"\r\nContent-Type: image/png\r\n\r\nINI\r\n" +
            line + "--\r\n");
}

TEST_F(OfflineEnvelope, IsNotSentWithoutAllOfItsDocuments) {
    NVESEnvelopeDefinition envelope = definition();
    envelope.documents->push_back(document("3", home_.path() / "missing.pdf"));
    const auto missing = upload(envelope);
    ASSERT_TRUE(missing.error);
    EXPECT_EQ(missing.error->failureReason(), kUnreadableFileReason);
    EXPECT_EQ(missing.error->userInfo.at(std::string(kTransportRequestSentKey)), Value(false));

    envelope = definition();
    envelope.documents->at(0)->documentId = "1\r\nX: y";
    EXPECT_EQ(upload(envelope).error->failureReason(), kInvalidHeaderReason);
    EXPECT_TRUE(server_->requests().empty());
}

TEST_F(OfflineEnvelope, IsAMultipartPostWhateverMethodIsAskedFor) {
    const NVESFileEntry entry{NVESFileEntry::Kind::TabImage, "tabId-1", {}, Data(std::string("x")), "1"};
    call({.path = "/f", .method = "PUT", .formParams = {{"k", 5}}, .files = {entry}});
    EXPECT_EQ(lastRequest().method(), "POST");
    EXPECT_NE(lastRequest().body.find("form-data; name=\"k\"\r\n\r\n5\r\n--"), std::string::npos);
}

TEST_F(OfflineEnvelope, EndsInAnErrorWhenADocumentChangesWhileItIsSent) {
    const auto file = home_.path() / "doc.pdf";
    const auto readAll = [&](const std::function<void()>& meanwhile) -> Failure {
        home_.file("doc.pdf", std::string(5000, 'a'));
        MultipartBody body("B");
        EXPECT_FALSE(body.addFile({{"name", "d"}}, "", file));
        body.finish();
        char buffer[1000];
        std::uint64_t total = 0;
        for (bool first = true;; first = false) {
            const auto count = body.read(buffer, sizeof buffer);
            if (!count) return count.error();
            if (first) meanwhile();
            total += *count;
            if (*count == 0) break;
        }
        EXPECT_EQ(total, body.size());
        return std::nullopt;
    };
    EXPECT_FALSE(readAll([] {}));
    EXPECT_TRUE(readAll([&] { std::filesystem::resize_file(file, 100); })) << "cut short";
    EXPECT_TRUE(readAll([&] { std::ofstream(file, std::ios::app) << "more"; })) << "grown";
    EXPECT_TRUE(readAll([&] {
        const auto old = std::filesystem::last_write_time(file);
        std::ofstream(file, std::ios::in | std::ios::out) << "b";
        std::filesystem::last_write_time(file, old + std::chrono::seconds(1));
    })) << "rewritten";
}

} // namespace
} // namespace norvane
