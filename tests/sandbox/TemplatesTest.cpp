#include "sandbox/DocumentCheck.h"
#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Tab.h"
#include "sandbox/Template.h"
#include "tests/sandbox/SandboxFixture.h"

#include <cmath>
#include <map>
#include <set>

namespace norvane::sandbox {

namespace {

class Templates : public SandboxFixture {
  protected:
    Json fetch(const std::string& id) { return client.get("templates/" + id).json(); }
    std::vector<std::string> ids() {
        std::vector<std::string> found;
        for (const Json& entry : client.get("templates").json().array("envelopeTemplates"))
            found.push_back(entry.text("templateId"));
        return found;
    }
};

int number(const Json& json, std::string_view key) { return static_cast<int>(json.find(key)->asNumber()); }

/// Where a signer sees the tab: what has no size of its own gets the device's, names and dates grow.
Box shown(const std::string& list, const Json& tab) {
    Box box{std::stod(tab.text("xPosition")), std::stod(tab.text("yPosition")), 150, 19};
    if (list == "signHereTabs") return {box.x, box.y + 22, 53, 45};
    if (list == "initialHereTabs") return {box.x, box.y + 16, 36, 50};
    if (list == "checkboxTabs" || list == "radioGroupTabs") return {box.x, box.y, 17, 17};
    if (tab.find("width")) box.width = number(tab, "width");
    return box;
}

bool overlap(const Box& left, const Box& right) {
    return left.x < right.x + right.width && right.x < left.x + left.width &&
           left.y < right.y + right.height && right.y < left.y + left.height;
}

} // namespace

TEST_F(Templates, AreListedInPagesSearchedAndSortedIntoFolders) {
    const Json all = client.get("templates").json();
    EXPECT_EQ(all.text("totalSetSize"), "4");
    const Json page = client.get("templates?start_position=1&count=2").json();
    ASSERT_EQ(page.array("envelopeTemplates").size(), 2U);
    EXPECT_EQ(page.array("envelopeTemplates")[0].text("templateId"), ids()[1]);
    EXPECT_EQ(page.text("resultSetSize"), "2");
    EXPECT_EQ(page.text("endPosition"), "2");
    EXPECT_EQ(page.text("nextUri"), "/templates?start_position=3&count=2");
    EXPECT_EQ(page.text("previousUri"), "/templates?start_position=0&count=2");
    EXPECT_EQ(client.get("templates?start_position=9").json().text("resultSetSize"), "0");
    EXPECT_EQ(client.get("templates?search_text=LEASE").json().text("totalSetSize"), "1");
    EXPECT_EQ(client.get("templates?folder=Sales").json().text("totalSetSize"), "2");
    const std::string first = all.array("envelopeTemplates")[0].text("folderId");
    EXPECT_EQ(client.get("templates?folder_ids=" + first).json().text("totalSetSize"), "1");
}

TEST_F(Templates, CanBeKeptAndSignedOffline) {
    for (const std::string& id : ids()) {
        const Json source = fetch(id);
        ASSERT_GT(number(*source.find("envelopeTemplateDefinition"), "pageCount"), 0);
        EXPECT_EQ(checkScalars(source), "") << "scalars travel as text";
        const Json& recipients = *source.find("recipients");
        EXPECT_EQ(
            recipients.text("recipientCount"),
            std::to_string(recipients.array("signers").size() + recipients.array("inPersonSigners").size()));
        for (const Json& inPerson : recipients.array("inPersonSigners"))
            for (const char* key : {"hostName", "hostEmail", "signerName", "signerEmail", "name", "email"})
                EXPECT_EQ(inPerson.find(key), nullptr) << "an in-person signer has but a role name: " << key;
        forEachSigner(recipients, [](const Json& signer) {
            EXPECT_FALSE(signer.text("roleName").empty());
            for (const char* key :
                 {"signingGroupName", "recipientSignatureProviders", "idCheckConfigurationName", "accessCode",
                  "excludedDocuments", "requireSignerCertificate"})
                EXPECT_EQ(signer.find(key), nullptr) << key;
            std::set<std::string> labels;
            forEachTab(signer, [&](const std::string& list, const std::string&, const Json& tab) {
                for (const auto& [key, value] : tab.members())
                    EXPECT_FALSE(key.starts_with("anchor") || key.starts_with("conditional")) << key;
                EXPECT_TRUE(isUuid(tab.text("tabId")));
                const bool isNew = labels.insert(tab.text("tabLabel")).second;
                EXPECT_TRUE(isNew || list == "radioGroupTabs");
            });
        });
    }
}

TEST_F(Templates, TabsLieOnTheirPagesAndApart) {
    for (const std::string& id : ids()) {
        const Json source = fetch(id);
        std::map<std::string, int> pages;
        for (const Json& document : source.array("documents"))
            pages[document.text("documentId")] = std::stoi(document.text("pages"));
        std::map<std::string, std::vector<Box>> boxes;
        forEachSigner(*source.find("recipients"), [&](const Json& signer) {
            forEachTab(signer, [&](const std::string& list, const std::string& document, const Json& tab) {
                const Box box = shown(list, tab);
                const int page = std::stoi(tab.text("pageNumber"));
                EXPECT_TRUE(page >= 1 && page <= pages.at(document));
                EXPECT_TRUE(box.x >= 36 && box.x + box.width <= 576 && box.y >= 36 &&
                            box.y + box.height <= 756);
                auto& others = boxes[document + "/" + tab.text("pageNumber")];
                for (const Box& other : others)
                    EXPECT_FALSE(overlap(box, other)) << tab.write();
                others.push_back(box);
            });
        });
    }
}

TEST_F(Templates, DocumentsAreWholePdfsWithThePagesThatTheyClaim) {
    for (const std::string& id : ids()) {
        const Json source = fetch(id);
        int pages = 0;
        for (const Json& document : source.array("documents")) {
            const Reply pdf = client.get("templates/" + id + "/documents/" + document.text("documentId"));
            EXPECT_EQ(pdf.contentType, "application/pdf");
            EXPECT_EQ(std::to_string(checkPdf(pdf.body).pages), document.text("pages"))
                << checkPdf(pdf.body).error;
            pages += checkPdf(pdf.body).pages;
        }
        const Reply combined = client.get("templates/" + id + "/documents/combined");
        EXPECT_EQ(checkPdf(combined.body).pages, pages);
        EXPECT_EQ(number(*source.find("envelopeTemplateDefinition"), "pageCount"), pages);
    }
}

TEST_F(Templates, TheLongOneHasSixtyPagesAndFortyTabs) {
    const Json source = fetch(kSupplyTemplateId);
    EXPECT_EQ(number(*source.find("envelopeTemplateDefinition"), "pageCount"), 60);
    EXPECT_EQ(source.find("recipients")->array("inPersonSigners").at(0).text("totalTabCount"), "40");
    EXPECT_EQ(fetch(kRentalTemplateId).array("documents").size(), 2U);
    EXPECT_EQ(fetch(kLeaseTemplateId).find("recipients")->array("inPersonSigners").size(), 2U);
    EXPECT_EQ(fetch(kConsentTemplateId).find("recipients")->array("signers").size(), 1U);
}

TEST(TemplateDrawing, GivesTheSameBytesEachTime) {
    const Template& first = templateCatalogue().front();
    EXPECT_EQ(makeTemplate(first.plan).documents.at(0).pdf, first.documents.at(0).pdf);
}

TEST_F(Templates, UnknownOnesAreTold) {
    EXPECT_EQ(client.get("templates/11111111-2222-3333-4444-555555555555").errorCode(), "TEMPLATE_NOT_FOUND");
    EXPECT_EQ(client.get("templates/..%2F..").status, 400);
    EXPECT_EQ(client.get(std::string("templates/") + kLeaseTemplateId + "/documents/2").status, 404);
}

} // namespace norvane::sandbox
