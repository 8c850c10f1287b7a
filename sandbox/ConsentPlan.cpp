#include "sandbox/TemplateIds.h"
#include "sandbox/TemplatePlans.h"

namespace norvane::sandbox {

namespace {

using Kind = Tab::Kind;

constexpr const char* kParticipant = "1";

void drawConsent(AgreementWriter& page) {
    const double left = AgreementWriter::kLeft;
    page.title("Consent to Take Part in a Study");
    page.subtitle("Comfort of wearable heart monitors in daily life  \xc2\xb7  Study HM-118, version 3");
    page.heading("Why this study is done");
    page.paragraph(
        "The *Ellery Institute for Everyday Health* wants to learn how comfortable a new chest-worn heart "
        "monitor is over several days. About sixty people take part. You are asked because you answered "
        "our notice and are between 18 and 75 years old.");
    page.heading("What you would do");
    page.paragraph(
        "You wear the monitor for five days and nights, keep a short diary, and visit us twice for about "
        "forty minutes. The monitor records your pulse and your movement. It gives no treatment and "
        "replaces none.");
    page.heading("Risks and benefits");
    page.paragraph(
        "The adhesive may irritate the skin; take the monitor off when it does. There is no direct benefit "
        "to you. You receive $120.00 for your time, or $20.00 for each full day if you stop earlier.");
    page.heading("Your data");
    page.paragraph(
        "Your recordings are kept under a number, apart from your name, for seven years. Results are "
        "published in a form that identifies nobody. You may ask at any time to see, correct or delete "
        "what is kept about you.");
    page.heading("Your choice");
    page.paragraph(
        "Taking part is voluntary. You may stop on any day, without giving a reason and without any "
        "disadvantage. Questions are answered by Dr. Ines Calloway, telephone 555 0142.");
    page.advance(2);
    page.place(Kind::Checkbox, kParticipant, "Later Contact",
               page.checkbox("The Institute may ask me later whether I would take part in another study."),
               false);
    page.place(
        Kind::Checkbox, kParticipant, "Share Recordings",
        page.checkbox("My recordings, under their number, may be shared with other research institutes."),
        false);
    page.rule();
    page.paragraph("I have read this page, my questions have been answered, and I agree to take part.");
    page.place(Kind::SignHere, kParticipant, "Participant Signature", page.signature(left, 240, "Signature"));
    page.advance(30);
    page.place(Kind::Text, kParticipant, "Participant Phone", page.field(344, 200, "Telephone"), true, 24);
    page.advance(AgreementWriter::kSignatureHeight - 30);
    page.place(Kind::FullName, kParticipant, "Participant Full Name", page.field(left, 240, "Name"));
    page.place(Kind::DateSigned, kParticipant, "Participant Date Signed",
               page.field(344, 200, "Date and time"));
}

} // namespace

TemplatePlan consentPlan() {
    TemplatePlan plan;
    plan.templateId = kConsentTemplateId;
    plan.name = "Study Consent";
    plan.description = "One-page consent of a participant, signed remotely";
    plan.folderName = "Research";
    plan.emailSubject = "Your consent to study HM-118";
    plan.emailBlurb = "Please read the page and sign it if you wish to take part.";
    plan.roles = {{kParticipant, "Participant", false, 1}};
    plan.documents = {
        {"Study Consent.pdf",
         {"Consent to Take Part in a Study", "ELLERY INSTITUTE FOR EVERYDAY HEALTH", "HM-118 / C3", 0},
         drawConsent}};
    return plan;
}

} // namespace norvane::sandbox
