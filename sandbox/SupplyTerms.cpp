#include "sandbox/SupplyTerms.h"

namespace norvane::sandbox {

const std::vector<SupplyArticle>& supplyArticles() {
    static const std::vector<SupplyArticle> articles{
        {"Definitions",
         {"*Agreement* means these articles, the schedules and every change made under article 14. *Site* "
          "means a "
          "place of business of the Customer described in schedule 2. *Goods* means the parts and supplies "
          "listed in "
          "schedule 3. *Services* means the maintenance described in schedule 1 and in the site sheets.",
          "*Working Day* means a day other than Saturday, Sunday or a public holiday at the Site concerned. "
          "A period "
          "counted in days begins on the day after the event and ends at midnight of its last day.",
          "Headings help the reader and do not change the meaning. When a schedule and an article disagree, "
          "the "
          "article prevails unless the schedule names the article that it departs from."}},
        {"Subject and term",
         {"The Supplier delivers the Goods and performs the Services for every Site. The Customer takes them "
          "and pays "
          "for them as set out below.",
          "The Agreement begins when both parties have signed it and lasts *thirty-six months*. It is "
          "renewed for "
          "twelve months at a time unless a party gives notice ninety days before the end of a period.",
          "The Customer may add a Site, or remove one that it closes, by a change order. The fees of the "
          "remaining "
          "Sites are not affected."}},
        {"Orders and delivery",
         {"The Customer orders Goods in writing, naming the Site, the part numbers and the quantities. An "
          "order binds "
          "the Supplier unless it objects within two Working Days.",
          "Goods on hand leave the Supplier's warehouse within one Working Day. For other Goods the Supplier "
          "names a "
          "date with its confirmation and keeps it.",
          "Delivery is made to the goods entrance of the Site during its opening hours. Risk passes when the "
          "Goods "
          "have been unloaded and the receipt has been signed.",
          "When a delivery is late by more than five Working Days the Customer may cancel the order, in "
          "whole or for "
          "the late part, and buy elsewhere."}},
        {"Services",
         {"The Supplier performs the Services with trained staff, the right tools and genuine parts, at the "
          "intervals "
          "of the site sheets, and records each visit in the maintenance book of the Site.",
          "A visit is announced three Working Days before. The Customer gives access to the equipment and "
          "names a "
          "person who knows it and can switch it off.",
          "The Supplier answers a report of a fault within the times of schedule 1. The time runs from the "
          "report and "
          "stops while the Customer cannot give access.",
          "Work that the site sheets do not cover is done on a separate order and charged by the hour."}},
        {"Acceptance",
         {"The Customer inspects Goods within ten Working Days after delivery and reports what is visibly "
          "wrong. Goods "
          "that fail are replaced at the Supplier's cost.",
          "A visit is accepted when the person in charge at the Site signs the report. A report that lists "
          "open "
          "points is accepted once they are done."}},
        {"Prices and payment",
         {"The prices of Goods are those of schedule 3, the fees of Services those of the site sheets. They "
          "include "
          "packing, delivery and travel, and exclude tax.",
          "Prices hold for twelve months. After that the Supplier may adjust them once a year by no more "
          "than the "
          "published index of producer prices, with sixty days' notice.",
          "Invoices name the order and the Site and are due in thirty days. Fees are invoiced at the end of "
          "each "
          "quarter. A disputed part may be withheld while the rest is paid.",
          "Overdue sums bear interest of eight per cent a year from the day after the due date."}},
        {"Warranty",
         {"The Supplier warrants that Goods are new, free of defects and fit for the equipment named in "
          "schedule 3, "
          "for twenty-four months from delivery, and that Services are done with skill and care.",
          "The Supplier repairs or replaces defective Goods, and repeats defective Services, without charge. "
          "When "
          "that fails twice the Customer may have its money back or a fair reduction.",
          "Wear parts are warranted for the running hours stated beside them in schedule 3."}},
        {"Safety and environment",
         {"The Supplier's staff follow the safety rules of the Site, carry proof of their training, and stop "
          "work that "
          "endangers people. The Customer tells them of dangers that it knows of.",
          "The Supplier takes back used filters, lubricants and batteries and disposes of them as the law "
          "requires. "
          "It hands over the certificates of disposal once a year."}},
        {"Staff and subcontractors",
         {"The Supplier may use subcontractors that the Customer has approved. It answers for them as for "
          "itself.",
          "A member of staff whom the Customer rejects for good reason is replaced within five Working "
          "Days."}},
        {"Liability and insurance",
         {"A party that breaks its duties compensates the other for the loss that was to be foreseen. "
          "Liability for "
          "injury, for intent and for gross negligence is not limited.",
          "In all other cases the liability of a party is limited, for each contract year, to the fees and "
          "prices of "
          "the twelve months before the loss, and does not extend to lost profit.",
          "The Supplier insures its liability for at least *$5,000,000* for each event, for the whole term, "
          "and shows "
          "proof of it on request."}},
        {"Confidentiality and data",
         {"Each party keeps confidential what it learns about the other's business, during the term and for "
          "five "
          "years after it, unless the law requires disclosure or the information is public.",
          "Names and telephone numbers of staff are used to carry out this Agreement and for nothing else, "
          "and are "
          "deleted when they are no longer needed."}},
        {"Events beyond control",
         {"A party that cannot perform because of an event beyond its control tells the other at once. Its "
          "duties rest "
          "while the event lasts. After sixty days either party may end the Agreement for the Sites "
          "concerned."}},
        {"Ending the agreement",
         {"Either party may end the Agreement at once when the other commits a serious breach and does not "
          "remedy it "
          "within thirty days of a written demand, or cannot pay its debts.",
          "When the Agreement ends the Supplier hands over the maintenance books, collects its own equipment "
          "and "
          "completes the orders that it has confirmed, unless the Customer cancels them."}},
        {"Changes, notices and assignment",
         {"Changes are made in writing and signed by both parties. Notices go to the addresses on the cover "
          "sheet and "
          "take effect on arrival.",
          "A party may assign the Agreement only with the other's consent, which is not needed for an "
          "assignment to a "
          "company of the same group."}},
        {"Law and disputes",
         {"The law of the Customer's seat applies. The parties try to settle a dispute between their "
          "managing "
          "directors within thirty days. After that the courts at the Customer's seat decide.",
          "If a term is void the others stand, and the parties replace it by a valid one that comes closest "
          "to what "
          "they wanted."}},
    };
    return articles;
}

} // namespace norvane::sandbox
