#include "sandbox/SupplyTerms.h"
#include "sandbox/TemplateIds.h"
#include "sandbox/TemplatePlans.h"

#include <array>
#include <cstdint>

namespace norvane::sandbox {

namespace {

using Kind = Tab::Kind;
using Rows = std::vector<std::vector<std::string>>;

constexpr const char* kCustomer = "1";
constexpr int kSites = 33;
constexpr int kPriceRows = 845;

/// Numbers that look arbitrary and are the same on every run.
class Sequence {
  public:
    explicit Sequence(std::uint32_t seed)
        : state_(seed * 2654435761u + 12345u) {}
    int between(int low, int high) {
        state_ = state_ * 1664525u + 1013904223u;
        return low + static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(high - low + 1));
    }
    template <class T, std::size_t N>
    const T& pick(const std::array<T, N>& choices) {
        return choices[static_cast<std::size_t>(between(0, static_cast<int>(N) - 1))];
    }

  private:
    std::uint32_t state_;
};

std::string padded(int number, int digits) {
    std::string text = std::to_string(number);
    while (static_cast<int>(text.size()) < digits)
        text.insert(text.begin(), '0');
    return text;
}

std::string money(int cents) {
    std::string text = std::to_string(cents / 100);
    for (int at = static_cast<int>(text.size()) - 3; at > 0; at -= 3)
        text.insert(static_cast<std::size_t>(at), ",");
    return "$" + text + "." + padded(cents % 100, 2);
}

constexpr std::array<const char*, 11> kStreets{
    "Harbour Street", "Mill Lane",    "Foundry Road",  "Station Road", "Canal Walk",    "Orchard Way",
    "Kiln Row",       "Ferry Street", "Market Square", "Quarry Road",  "Lighthouse Way"};
constexpr std::array<const char*, 7> kTowns{"Port Ellery",  "Marlow Sound", "Kestrel Bay", "Ashby Cross",
                                            "Tern Harbour", "Coldwater",    "Bramford"};
constexpr std::array<const char*, 4> kUses{"bakery", "cold store", "packing hall", "dispatch depot"};
constexpr std::array<const char*, 8> kPeople{"A. Whitlock", "R. Osei",    "M. Lindqvist", "J. Farrow",
                                             "P. Novak",    "S. Adeyemi", "C. Marchetti", "T. Hollis"};
constexpr std::array<const char*, 9> kMachines{"Screw compressor", "Refrigeration unit", "Conveyor drive",
                                               "Boiler feed pump", "Air handling unit",  "Dock leveller",
                                               "Pallet wrapper",   "Water softener",     "Standby generator"};
constexpr std::array<const char*, 4> kIntervals{"monthly", "every 2 months", "quarterly", "half-yearly"};
struct Part {
    const char* name;
    const char* unit;
};
constexpr std::array<Part, 12> kParts{{{"Filter element", "each"},
                                       {"Shaft seal", "each"},
                                       {"Bearing set", "set"},
                                       {"Drive belt", "metre"},
                                       {"Pressure switch", "each"},
                                       {"Gasket kit", "set"},
                                       {"Fan motor", "each"},
                                       {"Contactor", "each"},
                                       {"Relief valve", "each"},
                                       {"Sight glass", "each"},
                                       {"Oil charge", "litre"},
                                       {"Control board", "each"}}};
constexpr std::array<const char*, 5> kGrades{"standard", "food grade", "low temperature", "reinforced",
                                             "long life"};

void drawCover(AgreementWriter& page) {
    const double left = AgreementWriter::kLeft;
    page.advance(90);
    page.title("Supply and Maintenance Agreement");
    page.subtitle("Agreement No. 2025-SM-0877");
    page.rule();
    page.advance(10);
    page.paragraph(
        "between *Brightwater Technical Supply Ltd.*, Foundry Road 40, Coldwater (the *Supplier*)");
    page.paragraph("and the company named below (the *Customer*)");
    page.advance(14);
    page.place(Kind::Company, kCustomer, "Customer Company",
               page.field(left, 300, "Customer: name of the company"), true, 80);
    page.advance(AgreementWriter::kFieldHeight);
    page.place(Kind::Text, kCustomer, "Purchase Order Number",
               page.field(left, 300, "Customer's purchase order number"), true, 40);
    page.advance(AgreementWriter::kFieldHeight + 24);
    page.particulars({{"Sites", std::to_string(kSites)},
                      {"Term", "36 months"},
                      {"Currency", "US dollars"},
                      {"Billing", "quarterly"}});
    page.rule();
    page.paragraph(
        "This agreement consists of this cover sheet, fifteen articles and three schedules: service "
        "levels, site sheets and price list.");
    page.pageBreak();
}

void drawArticles(AgreementWriter& page) {
    page.title("Articles");
    page.advance(6);
    int number = 0;
    for (const SupplyArticle& article : supplyArticles()) {
        const std::string prefix = std::to_string(++number);
        page.heading("Article " + prefix + "  \xc2\xb7  " + article.title);
        int part = 0;
        for (const std::string& clause : article.clauses)
            page.clause(prefix + "." + std::to_string(++part), clause);
    }
    page.pageBreak();
}

void drawServiceLevels(AgreementWriter& page) {
    page.title("Schedule 1: Service levels");
    page.advance(6);
    page.paragraph(
        "Times are counted in hours of the Site's opening times. The level of each machine is stated in "
        "its site sheet.");
    page.table({{"Level", 60},
                {"Applies to", 206},
                {"Answer", 70, true},
                {"On site", 70, true},
                {"Repaired", 70, true}},
               {{"A", "Machines without which the Site stops", "1 h", "4 h", "12 h"},
                {"B", "Machines with a stand-in on the Site", "2 h", "8 h", "24 h"},
                {"C", "All other machines", "4 h", "24 h", "72 h"}});
    page.heading("Credits");
    page.paragraph(
        "For each full hour beyond the time of level A, and each four hours beyond that of level B, the fee "
        "of the Site for the quarter is reduced by two per cent, by twenty per cent at most.");
    page.heading("Reports");
    page.paragraph(
        "The Supplier reports every quarter, for each Site, the faults, the times reached, the parts used "
        "and the visits planned for the quarter to come.");
    page.place(Kind::Checkbox, kCustomer, "Electronic Reports",
               page.checkbox("The Customer wishes to receive reports and invoices electronically."), false);
    page.pageBreak();
}

void drawSite(AgreementWriter& page, int site) {
    Sequence values(static_cast<std::uint32_t>(site));
    const std::string number = padded(site, 2);
    page.title("Site sheet " + number);
    page.subtitle("Schedule 2  \xc2\xb7  Particulars, machines and visits");
    page.particulars(
        {{"Address", std::to_string(values.between(1, 180)) + " " + values.pick(kStreets)},
         {"Town", values.pick(kTowns)},
         {"Use", values.pick(kUses)},
         {"Floor area", std::to_string(values.between(8, 64) * 50) + " m\xc2\xb2"},
         {"In charge", values.pick(kPeople)},
         {"Opening times", "Mon to Sat, 6:00 to " + std::to_string(values.between(16, 22)) + ":00"}});
    Rows machines;
    int fee = 0;
    const int count = values.between(11, 17);
    for (int index = 1; index <= count; ++index) {
        const int price = values.between(38, 410) * 100 + 50 * values.between(0, 1);
        fee += price;
        machines.push_back({number + "-" + padded(index, 2), values.pick(kMachines),
                            std::to_string(values.between(2009, 2024)),
                            std::string(1, static_cast<char>('A' + values.between(0, 2))),
                            values.pick(kIntervals), money(price)});
    }
    page.heading("Machines under maintenance");
    page.table({{"No.", 52},
                {"Machine", 150},
                {"Built", 52},
                {"Level", 46},
                {"Visits", 96},
                {"Fee a quarter", 80, true}},
               machines);
    page.paragraph(
        "The fee of this Site is *" + money(fee) +
        "* a quarter. The first visit takes place within four "
        "weeks after the Agreement begins; the machines are then entered in the maintenance book.");
    page.place(Kind::InitialHere, kCustomer, "Site " + number + " Initials",
               page.initials(AgreementWriter::kRight, 664, "Site sheet checked: customer's initials"));
    page.pageBreak();
}

void drawPrices(AgreementWriter& page) {
    page.title("Schedule 3: Price list");
    page.advance(6);
    Rows rows;
    Sequence values(977);
    for (int index = 0; index < kPriceRows; ++index) {
        const std::string number =
            "BT-" + std::to_string(10'000 + index * 7) + "-" + padded(values.between(1, 99), 2);
        const Part& part = values.pick(kParts);
        const std::string grade = values.pick(kGrades);
        const std::string machine = values.pick(kMachines);
        const int price = values.between(4, 900) * 95;
        rows.push_back({number, part.name + (", " + grade), machine, part.unit, money(price)});
    }
    page.table({{"Part", 78}, {"Description", 166}, {"For", 112}, {"Unit", 48}, {"Price", 72, true}}, rows);
    page.pageBreak();
}

void drawSignatures(AgreementWriter& page) {
    const double left = AgreementWriter::kLeft;
    page.title("Signatures");
    page.advance(6);
    page.paragraph(
        "The Supplier signed this Agreement when it made the offer. The Customer accepts it, with its three "
        "schedules, by the signature below.");
    page.advance(10);
    page.textAt(left, page.y() + 8, "FOR THE CUSTOMER", 8.4, true);
    page.advance(16);
    page.place(Kind::SignHere, kCustomer, "Customer Signature", page.signature(left, 240, "Signature"));
    page.advance(AgreementWriter::kSignatureHeight);
    page.place(Kind::FullName, kCustomer, "Customer Full Name", page.field(left, 240, "Name"));
    page.place(Kind::Title, kCustomer, "Customer Title", page.field(344, 200, "Position"), false, 80);
    page.advance(AgreementWriter::kFieldHeight);
    page.place(Kind::DateSigned, kCustomer, "Customer Date Signed", page.field(left, 240, "Date and time"));
}

void drawSupply(AgreementWriter& page) {
    drawCover(page);
    drawArticles(page);
    drawServiceLevels(page);
    for (int site = 1; site <= kSites; ++site)
        drawSite(page, site);
    drawPrices(page);
    drawSignatures(page);
}

} // namespace

TemplatePlan supplyPlan() {
    TemplatePlan plan;
    plan.templateId = kSupplyTemplateId;
    plan.name = "Supply and Maintenance Agreement";
    plan.description = "Long agreement with a sheet for each site, signed in person by the customer";
    plan.folderName = "Sales";
    plan.emailSubject = "Supply and maintenance agreement 2025-SM-0877";
    plan.emailBlurb = "Please initial every site sheet and sign the last page.";
    plan.roles = {{kCustomer, "Customer", true, 1}};
    plan.documents = {
        {"Supply and Maintenance Agreement.pdf",
         {"Supply and Maintenance Agreement", "BRIGHTWATER TECHNICAL SUPPLY LTD.", "2025-SM-0877", 0},
         drawSupply}};
    return plan;
}

} // namespace norvane::sandbox
