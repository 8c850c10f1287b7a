#include "sandbox/TemplateIds.h"
#include "sandbox/TemplatePlans.h"

#include <utility>

namespace norvane::sandbox {

namespace {

using Kind = Tab::Kind;

constexpr const char* kRenter = "1";

void placeRadio(AgreementWriter& page, const std::string& value, const std::string& text) {
    Tab radio;
    radio.kind = Kind::Radio;
    radio.recipientId = kRenter;
    radio.label = value;
    radio.group = "Hand-over";
    radio.required = true;
    radio.box = page.checkbox(text);
    page.place(std::move(radio));
}

void placeReturnDate(AgreementWriter& page, const Box& box) {
    Tab formula;
    formula.kind = Kind::Formula;
    formula.recipientId = kRenter;
    formula.label = "Latest Return";
    formula.box = box;
    formula.formula = "AddDays([Renter Date Signed], 14)";
    page.place(std::move(formula));
}

void drawItems(AgreementWriter& page) {
    page.heading("Equipment");
    page.table({{"Item", 56},
                {"Description", 230},
                {"Quantity", 60, true},
                {"Day rate", 62, true},
                {"Deposit", 68, true}},
               {{"GX-240", "Generator, 4.2 kW, with two extension leads", "1", "$48.00", "$250.00"},
                {"LT-009", "Lighting tower, LED, 5 m mast", "2", "$31.50", "$300.00"},
                {"CB-117", "Cable ramp, 1 m, yellow and black", "12", "$1.20", "$60.00"},
                {"HT-030", "Patio heater, gas, 11 kW", "4", "$14.00", "$160.00"},
                {"TN-612", "Pavilion, 6 x 12 m, with side walls", "1", "$120.00", "$500.00"}});
    page.particulars({{"Rental period", "14 days from signing"},
                      {"Total of day rates", "$301.40"},
                      {"Insurance", "included"},
                      {"Total deposit", "$1,270.00"}});
}

void drawOrder(AgreementWriter& page) {
    const double left = AgreementWriter::kLeft;
    page.title("Equipment Rental Order");
    page.subtitle("Order 70318  \xc2\xb7  Prices without tax");
    page.paragraph(
        "*Marlow Event Supply* rents the equipment listed below to the *Renter* named on this page, under "
        "the attached safety and return conditions.");
    page.place(Kind::Company, kRenter, "Renter Company", page.field(left, 226, "Company"), true, 80);
    page.place(Kind::Title, kRenter, "Renter Title", page.field(318, 226, "Position in the company"), false,
               80);
    page.advance(AgreementWriter::kFieldHeight);
    page.place(Kind::Text, kRenter, "Delivery Address", page.field(left, 476, "Place of use"), true, 160);
    page.advance(AgreementWriter::kFieldHeight + 2);
    drawItems(page);
    page.heading("Hand-over");
    placeRadio(page, "Collect", "The Renter collects the equipment at the depot, Dock Road 8, from 7 a.m.");
    placeRadio(page, "Deliver", "Marlow Event Supply delivers to the place of use for a further $85.00.");
    page.heading("Signature");
    page.paragraph(
        "The Renter orders the equipment, accepts the attached conditions and returns everything by the "
        "date below.");
    page.place(Kind::SignHere, kRenter, "Renter Signature", page.signature(left, 226, "Signature"));
    page.advance(30);
    placeReturnDate(page, page.field(318, 226, "Latest return"));
    page.advance(AgreementWriter::kSignatureHeight - 30);
    page.place(Kind::FullName, kRenter, "Renter Full Name", page.field(left, 226, "Name"));
    page.place(Kind::DateSigned, kRenter, "Renter Date Signed", page.field(318, 226, "Date and time"));
}

void drawConditions(AgreementWriter& page) {
    page.title("Safety and Return Conditions");
    page.subtitle("Attachment to order 70318");
    page.heading("Safe use");
    page.clause(
        "1", "Generators and heaters stand in the open air, three metres from walls, tents and anything that "
             "burns, and are never left running unattended.");
    page.clause(
        "2", "Masts and pavilions are anchored at every point that the manufacturer provides. Above a wind "
             "speed of 50 km/h masts are lowered and pavilions cleared.");
    page.clause("3",
                "Cables that cross a path lie in cable ramps. Damaged cables are taken out of use at once.");
    page.clause("4", "Only adults who have read the operating instructions handle fuel and gas.");
    page.heading("Care and loss");
    page.clause(
        "5",
        "The Renter keeps the equipment in its own custody, passes it to nobody else, and reports damage "
        "and theft on the day on which they are noticed.");
    page.clause(
        "6", "What is lost or damaged beyond ordinary wear is repaired or replaced at the Renter's cost; the "
             "deposit is set against that cost.");
    page.heading("Return");
    page.clause("7",
                "The equipment is returned clean, dry and complete. Cleaning is charged at $42.00 an hour.");
    page.clause("8", "For each day after the latest return one and a half day rates are due.");
    page.clause("9", "The deposit is paid back within five working days after a complete return.");
    page.place(Kind::InitialHere, kRenter, "Renter Initials",
               page.initials(AgreementWriter::kRight, 664, "Read and understood: renter's initials"));
}

} // namespace

TemplatePlan rentalPlan() {
    TemplatePlan plan;
    plan.templateId = kRentalTemplateId;
    plan.name = "Equipment Rental";
    plan.description = "Rental order with its conditions as a second document, signed in person";
    plan.folderName = "Sales";
    plan.emailSubject = "Equipment rental order 70318";
    plan.emailBlurb = "Please check the order and sign it.";
    plan.roles = {{kRenter, "Renter", true, 1}};
    const std::string company = "MARLOW EVENT SUPPLY";
    plan.documents = {{"Rental Order.pdf", {"Equipment Rental Order", company, "Order 70318", 0}, drawOrder},
                      {"Rental Conditions.pdf",
                       {"Safety and Return Conditions", company, "Order 70318 / A", 0},
                       drawConditions}};
    return plan;
}

} // namespace norvane::sandbox
