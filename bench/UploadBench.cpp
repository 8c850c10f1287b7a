#include "bench/BenchHome.h"
#include "bench/TlsSink.h"
#include "src/api/MultipartBody.h"

#include <norvane/platform/Platform.h>

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <random>

// A document of 25 MB in a multipart request over loopback TLS, beside libcurl alone sending it from the
// file.

namespace norvane::bench {

namespace {

constexpr std::size_t kBytes = 25'000'000;

TlsSink& sink() {
    static TlsSink server(benchHome() / "sink");
    return server;
}

const std::filesystem::path& document() {
    static const std::filesystem::path file = [] {
        const auto path = benchHome() / "document.pdf";
        std::mt19937_64 random(7);
        std::vector<std::uint64_t> bytes(kBytes / sizeof(std::uint64_t));
        for (auto& word : bytes)
            word = random();
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), kBytes);
        return path;
    }();
    return file;
}

/// The kit's session, trusting the sink.
HttpSession& session() {
    static const Platform platform = [] {
        PlatformOptions options;
        options.home = benchHome() / "upload";
        options.trustAnchorFile = sink().caFile();
        options.credentialStore = CredentialStoreKind::File;
        return *Platform::complete({}, options);
    }();
    return *platform.http;
}

bool sendOnce() {
    auto body = std::make_shared<MultipartBody>("norvane-bench-boundary");
    if (body->addFile({{"name", "documentId-1"}, {"filename", "document.pdf"}, {"documentId", "1"}},
                      "application/pdf", document()))
        return false;
    body->finish();
    HttpRequest request{.url = *Url::parse(sink().url() + "/upload")};
    request.method = "POST";
    request.headers = {{"Content-Type", body->contentType()}};
    request.body = body;
    std::promise<bool> answered;
    session().send(std::move(request), [&](const Result<HttpResponse>& response) {
        answered.set_value(response && response->status == 200);
    });
    return answered.get_future().get();
}

void uploadKit(benchmark::State& state) {
    sendOnce(); // the document and the connection are made once
    for (auto _ : state)
        if (!sendOnce()) state.SkipWithError("the upload failed");
}

std::size_t ignore(char*, std::size_t size, std::size_t count, void*) { return size * count; }

void uploadLimit(benchmark::State& state) {
    CURL* curl = curl_easy_init();
    curl_easy_setopt(curl, CURLOPT_URL, (sink().url() + "/upload").c_str());
    curl_easy_setopt(curl, CURLOPT_CAINFO, sink().caFile().c_str());
    curl_easy_setopt(curl, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, ignore);
    curl_slist* headers = curl_slist_append(nullptr, "Expect:");
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
    const auto send = [curl] {
        curl_mime* mime = curl_mime_init(curl);
        curl_mimepart* part = curl_mime_addpart(mime);
        curl_mime_name(part, "documentId-1");
        curl_mime_filedata(part, document().c_str());
        curl_easy_setopt(curl, CURLOPT_MIMEPOST, mime);
        const bool isSent = curl_easy_perform(curl) == CURLE_OK;
        curl_mime_free(mime);
        return isSent;
    };
    send();
    for (auto _ : state)
        if (!send()) state.SkipWithError("libcurl failed");
    curl_slist_free_all(headers);
    curl_easy_cleanup(curl);
}

BENCHMARK(uploadKit)->Name("upload 25 MB : libcurl alone/kit")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(uploadLimit)
    ->Name("upload 25 MB : libcurl alone/limit")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

} // namespace norvane::bench
