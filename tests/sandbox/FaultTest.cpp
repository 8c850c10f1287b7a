#include "sandbox/Fault.h"

#include "sandbox/FaultPlan.h"
#include "sandbox/Json.h"

#include <gtest/gtest.h>

namespace norvane::sandbox {

TEST(Fault, IsReadFromTextAndFromJsonAlike) {
    const auto text = parseFault("POST /v2/accounts/*/envelopes status=429 nth=3 delay=20 body={\"a\": 1}");
    ASSERT_TRUE(text.ok()) << text.error;
    EXPECT_EQ(text.fault.status, 429);
    EXPECT_EQ(text.fault.skip, 2U);
    EXPECT_EQ(text.fault.times, 1U);
    EXPECT_EQ(text.fault.delay.count(), 20);
    EXPECT_EQ(text.fault.body, "{\"a\": 1}");
    const auto json = faultFromJson(faultJson(text.fault));
    ASSERT_TRUE(json.ok()) << json.error;
    EXPECT_EQ(faultJson(json.fault).write(), faultJson(text.fault).write());
    EXPECT_EQ(parseFault("* /** delay=5").fault.kind, Fault::Kind::None);
    EXPECT_EQ(parseFault("GET /a cut-answer=7 times=0").fault.bytes, 7U);
}

TEST(Fault, RefusesWhatItDoesNotUnderstand) {
    for (const char* text :
         {"", "GET", "GET /a", "GET a hang", "GET /a explode", "GET /a status", "GET /a status=99",
          "GET /a hang portal", "GET /a cut-request", "GET /a hang times=x", "GET /a hang nth=0",
          "GET /a hang times=99999999999", "GET /a portal=1"})
        EXPECT_FALSE(parseFault(text).ok()) << text;
    for (const char* json : {"[]", R"({"kind":"explode"})", R"({"status":"503"})", R"({"path":"a"})",
                             R"({"oops":1})", R"({"times":-1})"})
        EXPECT_FALSE(faultFromJson(parseJson(json).value).ok()) << json;
}

TEST(Fault, MatchesSegmentsAndTails) {
    Fault fault;
    fault.method = "GET";
    fault.path = "/v2/accounts/*/templates";
    EXPECT_TRUE(fault.matches("GET", "/v2/accounts/7/templates"));
    EXPECT_FALSE(fault.matches("POST", "/v2/accounts/7/templates"));
    EXPECT_FALSE(fault.matches("GET", "/v2/accounts/7/templates/1"));
    EXPECT_FALSE(fault.matches("GET", "/v2/accounts/templates"));
    fault.path = "/v2/**";
    EXPECT_TRUE(fault.matches("GET", "/v2/accounts/7/templates/1"));
    EXPECT_FALSE(fault.matches("GET", "/v3/accounts"));
}

TEST(FaultPlan, SkipsCountsDownAndLetsTheNextFaultTry) {
    FaultPlan plan;
    plan.add(parseFault("GET /a status=500 skip=1 times=2").fault);
    plan.add(parseFault("* /** status=400 times=0").fault);
    const auto statusOfNext = [&] { return plan.take("GET", "/a")->status; };
    EXPECT_EQ(statusOfNext(), 400);
    EXPECT_EQ(statusOfNext(), 500);
    EXPECT_EQ(statusOfNext(), 500);
    EXPECT_EQ(statusOfNext(), 400);
    EXPECT_EQ(plan.remaining().size(), 1U);
    plan.clear();
    EXPECT_FALSE(plan.take("GET", "/a").has_value());
}

} // namespace norvane::sandbox
