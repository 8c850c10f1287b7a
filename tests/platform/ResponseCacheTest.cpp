#include "src/platform/http/ResponseCache.h"

#include "tests/support/HttpFixture.h"

#include <fstream>

namespace norvane {
namespace {

using std::chrono::seconds;

/// A server whose answers carry the headers that the test chose, and the count of requests as their body.
class HttpCache : public HttpFixture {
  protected:
    void SetUp() override {
        HttpFixture::SetUp();
        serve([this](const ReceivedRequest& received) {
            const std::lock_guard lock(mutex);
            if (unchanged && received.header("If-None-Match")) return ServerReply::with(304, "", headers);
            return ServerReply::with(200, std::to_string(++served) + padding, headers);
        });
    }
    std::string ask(const std::string& target = "/", HttpHeaders with = {}, bool usesCache = true) {
        auto request = get(target);
        request.headers = std::move(with);
        request.usesCache = usesCache;
        const auto result = send(std::move(request));
        EXPECT_TRUE(result && result->status == 200);
        return result ? std::string(result->body.view().substr(0, result->body.size() - padding.size())) : "";
    }
    void answerWith(ServerReply::Headers next) {
        const std::lock_guard lock(mutex);
        headers = std::move(next);
    }

    std::mutex mutex; ///< guards what follows
    ServerReply::Headers headers;
    bool unchanged = false;
    int served = 0;
    std::string padding;
};

TEST_F(HttpCache, ServesFreshAnswersWithoutAsking) {
    answerWith({{"Cache-Control", "private, Max-Age=60"}, {"Age", "10"}});
    EXPECT_EQ(ask(), "1");
    clock->advance(seconds(49));
    EXPECT_EQ(ask(), "1");
    EXPECT_EQ(ask("/", {}, false), "2") << "a request may bypass the cache";
    EXPECT_EQ(ask(), "1") << "which stores nothing either";
    session = makeSession();
    EXPECT_EQ(ask(), "1") << "the next process finds it on the disk";
    clock->advance(seconds(1));
    EXPECT_EQ(ask(), "3");
    clock->advance(-seconds(3600));
    EXPECT_EQ(ask(), "4") << "a clock set back tells no age";
}

TEST_F(HttpCache, GoesByDatesWhenThereIsNoMaxAge) {
    clock->set(Date(seconds(784'111'777))); // Sun, 06 Nov 1994 08:49:37 GMT
    answerWith({{"Date", "Sun, 06 Nov 1994 08:49:00 GMT"}, {"Expires", "Sun, 06 Nov 1994 08:50:00 GMT"}});
    EXPECT_EQ(ask(), "1");
    clock->advance(seconds(22));
    EXPECT_EQ(ask(), "1");
    clock->advance(seconds(1));
    EXPECT_EQ(ask(), "2");
    answerWith({{"Expires", "0"}});
    EXPECT_EQ(ask("/never"), "3");
    EXPECT_EQ(ask("/never"), "4");
}

TEST_F(HttpCache, KeepsNothingThatItMustNot) {
    const ServerReply::Headers refused[] = {{{"Cache-Control", "max-age=60, no-store"}},
                                            {{"Cache-Control", "max-age=60"}, {"Vary", "*"}},
                                            {{"Cache-Control", "max-age=soon"}},
                                            {{"Cache-Control", "no-cache=\"max-age=60, x\", max-age=60"}},
                                            {}};
    for (const auto& next : refused) {
        answerWith(next);
        const std::string first = ask();
        EXPECT_NE(ask(), first);
    }
}

TEST_F(HttpCache, AsksWhetherAStaleAnswerStillHolds) {
    answerWith({{"Cache-Control", "max-age=10"}, {"ETag", "\"a\""}, {"X-Old", "old"}});
    EXPECT_EQ(ask(), "1");
    clock->advance(seconds(11));
    answerWith({{"Cache-Control", "max-age=100"}, {"ETag", "\"a\""}});
    unchanged = true;
    EXPECT_EQ(ask(), "1");
    EXPECT_EQ(server->requests().back().header("If-None-Match"), "\"a\"");
    clock->advance(seconds(99));
    EXPECT_EQ(ask(), "1") << "the new lifetime counts";
    EXPECT_EQ(server->requests().size(), 2u);
}

TEST_F(HttpCache, GivesNoAnswerToARequestWithOtherHeaders) {
    answerWith({{"Cache-Control", "max-age=60"}, {"Vary", "Accept"}});
    EXPECT_EQ(ask("/", {{"Authorization", "anna"}}), "1");
    EXPECT_EQ(ask("/", {{"Authorization", "bert"}}), "2");
    EXPECT_EQ(ask("/", {{"Authorization", "anna"}, {"Accept", "text/plain"}}), "3");
    EXPECT_EQ(ask("/", {{"authorization", "anna"}}), "1");
    EXPECT_EQ(ask("/", {{"Authorization", "anna"}, {"Range", "bytes=0-0"}}), "4");
    EXPECT_EQ(ask("/?q"), "5");
}

TEST_F(HttpCache, ForgetsWhatWasClearedOrChanged) {
    answerWith({{"Cache-Control", "max-age=60"}});
    EXPECT_EQ(ask(), "1");
    session->clearCache();
    EXPECT_EQ(ask(), "2");
    ASSERT_TRUE(send(post("/", "change")));
    EXPECT_EQ(ask(), "4");
}

TEST_F(HttpCache, StaysWithinItsBoundsAndDropsTheLeastUsed) {
    answerWith({{"Cache-Control", "max-age=60"}});
    padding.assign(1000, 'x');
    const auto folder = files->cachesFolder() / "swagger_url_cache";
    session->setCacheCapacity(0, 4000);
    std::string answers;
    for (const char* target : {"/a", "/b", "/c", "/a", "/d", "/a"})
        answers += ask(target);
    EXPECT_EQ(answers, "123141");
    EXPECT_EQ(ask("/b"), "5") << "used longest ago, so it made room";
    const auto bytes = [&] {
        std::uintmax_t sum = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            sum += entry.file_size();
        return sum;
    };
    EXPECT_LE(bytes(), 4000u);
    session->setCacheCapacity(0, 1500);
    EXPECT_LE(bytes(), 1500u);
    session->setCacheCapacity(0, 0);
    EXPECT_EQ(ask("/a"), "6");
    EXPECT_EQ(bytes(), 0u);
    session->setCacheCapacity(4000, 0);
    EXPECT_EQ(ask("/e"), "7");
    EXPECT_EQ(ask("/e"), "7");
}

TEST_F(HttpCache, TakesADamagedFileForNone) {
    answerWith({{"Cache-Control", "max-age=60"}});
    EXPECT_EQ(ask(), "1");
    for (const auto& entry :
         std::filesystem::directory_iterator(files->cachesFolder() / "swagger_url_cache")) {
        std::fstream file(entry.path(), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(-1, std::ios::end).put('X');
    }
    session = makeSession();
    EXPECT_EQ(ask(), "2");
}

TEST_F(HttpCache, KeepsNoAnswerThatWasAskedForBeforeItWasCleared) {
    ResponseCache cache(files);
    const auto before = cache.generation();
    cache.clear();
    cache.store("key", {HttpResponse{200, {}, Data(std::string("late")), {}}, {}, {}}, before);
    EXPECT_FALSE(cache.find("key"));
}

} // namespace
} // namespace norvane
