#include "sandbox/TemplateIds.h"
#include "sandbox/TemplatePlans.h"

namespace norvane::sandbox {

namespace {

using Kind = Tab::Kind;

constexpr const char* kTenant = "1";
constexpr const char* kLandlord = "2";
constexpr double kHalf = 222;
constexpr double kRightHalf = AgreementWriter::kRight - kHalf;

void drawParties(AgreementWriter& page) {
    page.heading("1.  Parties and premises");
    page.paragraph(
        "This lease is made between *Alder Row Properties LLC* of 210 Wharf Street, Port Ellery (the "
        "*Landlord*) and the person who signs below as tenant (the *Tenant*). The Landlord lets to the "
        "Tenant the apartment known as *14 Quay Street, Unit 3B, Port Ellery*, with the fixtures and "
        "appliances listed in the move-in inventory (the *Premises*), to be used as a private home only.");
    const double left = AgreementWriter::kLeft;
    page.place(Kind::Text, kTenant, "Tenant Current Address",
               page.field(left, 300, "Tenant's current address"), true, 120);
    page.place(Kind::Text, kTenant, "Tenant Phone", page.field(384, 160, "Tenant's telephone"), true, 24);
    page.advance(AgreementWriter::kFieldHeight);
    page.place(Kind::Text, kTenant, "Emergency Contact",
               page.field(left, 300, "Person to notify in an emergency"), false, 120);
    page.place(Kind::Text, kTenant, "Number of Occupants", page.field(384, 160, "Number of occupants"), true,
               2);
    page.advance(AgreementWriter::kFieldHeight + 2);
}

void drawTerms(AgreementWriter& page) {
    page.heading("2.  Term and rent");
    page.clause("2.1",
                "The term is twelve months. It begins at noon on *1 June 2025* and ends at noon on *31 May "
                "2026*, and then runs on from month to month until either party gives sixty days' notice.");
    page.clause("2.2",
                "The rent is *$1,850.00* a month, due in advance on the first day of each month. A payment "
                "that arrives after the fifth day carries a late charge of $50.00.");
    page.clause("2.3", "Rent is paid by bank transfer under the instructions that the Landlord enters here:");
    page.place(Kind::Text, kLandlord, "Payment Instructions",
               page.field(AgreementWriter::kLeft + 26, 450, "Bank, account holder and account number"), true,
               160);
    page.advance(AgreementWriter::kFieldHeight + 4);
    page.heading("3.  Deposit");
    page.clause(
        "3.1", "On signing, the Tenant pays a deposit of *$1,850.00*, held in an account apart from the "
               "Landlord's own money. Within thirty days after the Tenant moves out the Landlord returns it, "
               "less the cost of damage beyond ordinary wear, with a written account of every deduction.");
    page.heading("4.  Options");
    page.place(Kind::Checkbox, kTenant, "Parking Space",
               page.checkbox("The Tenant rents parking space P-17 for a further $95.00 a month."), false);
    page.place(
        Kind::Checkbox, kTenant, "Pet Addendum",
        page.checkbox("The Tenant keeps one cat or one dog of up to 15 kg, on the terms of the pet addendum "
                      "and for a further $35.00 a month."),
        false);
}

void drawInitials(AgreementWriter& page) {
    const double top = 660;
    page.place(Kind::InitialHere, kTenant, "Tenant Initials", page.initials(410, top, "Tenant's initials"));
    page.place(Kind::InitialHere, kLandlord, "Landlord Initials",
               page.initials(AgreementWriter::kRight, top, "Landlord's initials"));
}

void drawDuties(AgreementWriter& page) {
    page.heading("5.  Care of the premises");
    page.clause(
        "5.1", "The Tenant keeps the Premises clean and ventilated, uses the appliances as they are meant to "
               "be used, and reports leaks, mould and defects without delay.");
    page.clause("5.2",
                "The Landlord keeps the structure, the heating, the plumbing and the wiring in repair, and "
                "begins urgent repairs within twenty-four hours of the Tenant's report.");
    page.clause("5.3",
                "Alterations, including paint, locks and satellite dishes, need the Landlord's written "
                "consent, which is not refused without reason.");
    page.heading("6.  Access");
    page.clause("6.1",
                "The Landlord may enter on forty-eight hours' written notice, between 9 a.m. and 6 p.m., to "
                "inspect, repair or show the Premises; in an emergency at any time.");
    page.heading("7.  Ending the lease early");
    page.clause(
        "7.1", "The Tenant may end the lease early on sixty days' notice and payment of one month's rent. "
               "The Landlord may end it when rent is thirty days overdue and stays unpaid for ten days after "
               "a written reminder.");
    page.clause("7.2",
                "When the lease ends the Tenant returns all keys and leaves the Premises empty, clean and in "
                "the condition of the move-in inventory, ordinary wear excepted.");
    page.heading("8.  Notices and general terms");
    page.clause("8.1",
                "Notices are in writing and go to the Premises for the Tenant, and to this address for the "
                "Landlord:");
    page.place(Kind::Text, kLandlord, "Landlord Notice Address",
               page.field(AgreementWriter::kLeft + 26, 450, "Landlord's address for notices"), false, 160);
    page.advance(AgreementWriter::kFieldHeight + 4);
    page.clause("8.2",
                "This lease, the inventory and any addendum are the whole agreement. Changes are made in "
                "writing and signed by both parties. The law of the place of the Premises applies.");
}

void drawSigner(AgreementWriter& page, const char* recipient, const std::string& role, double x, double top) {
    page.advance(top - page.y());
    page.textAt(x, page.y() + 8, role == "Tenant" ? "TENANT" : "LANDLORD", 8.4, true);
    page.advance(14);
    page.place(Kind::SignHere, recipient, role + " Signature", page.signature(x, kHalf, "Signature"));
    page.advance(AgreementWriter::kSignatureHeight);
    page.place(Kind::FullName, recipient, role + " Full Name", page.field(x, kHalf, "Name"));
    page.advance(AgreementWriter::kFieldHeight);
    page.place(Kind::DateSigned, recipient, role + " Date Signed", page.field(x, kHalf, "Date and time"));
}

void drawLease(AgreementWriter& page) {
    page.title("Residential Lease Agreement");
    page.subtitle("14 Quay Street, Unit 3B, Port Ellery  \xc2\xb7  Fixed term of twelve months");
    drawParties(page);
    drawTerms(page);
    drawInitials(page);
    page.pageBreak();
    drawDuties(page);
    page.heading("9.  Signatures");
    page.paragraph(
        "Each party has read both pages of this lease, has had time to ask for advice, and signs it on the "
        "date shown beside the signature.");
    page.advance(4);
    const double top = page.y();
    drawSigner(page, kTenant, "Tenant", AgreementWriter::kLeft, top);
    drawSigner(page, kLandlord, "Landlord", kRightHalf, top);
}

} // namespace

TemplatePlan leasePlan() {
    TemplatePlan plan;
    plan.templateId = kLeaseTemplateId;
    plan.name = "Residential Lease";
    plan.description = "Twelve-month lease of an apartment, signed in person by tenant and landlord";
    plan.folderName = "Property";
    plan.emailSubject = "Residential lease for 14 Quay Street, Unit 3B";
    plan.emailBlurb = "Please read and sign the lease of your new home.";
    plan.roles = {{kTenant, "Tenant", true, 1}, {kLandlord, "Landlord", true, 2}};
    plan.documents = {
        {"Residential Lease.pdf",
         {"Residential Lease Agreement", "ALDER ROW PROPERTIES LLC", "Lease No. AR-2025-0314", 0},
         drawLease}};
    return plan;
}

} // namespace norvane::sandbox
