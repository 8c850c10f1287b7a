#pragma once

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

namespace norvane::bench {

/// A TLS server on loopback that reads each request to its end, keeps nothing, and answers "{}". One
/// connection at a time, HTTP/1.1 with connections kept; bodies need a "Content-Length".
class TlsSink {
  public:
    explicit TlsSink(const std::filesystem::path& folder);
    ~TlsSink();
    TlsSink(const TlsSink&) = delete;
    TlsSink& operator=(const TlsSink&) = delete;

    std::string url() const { return "https://127.0.0.1:" + std::to_string(port_); }
    const std::filesystem::path& caFile() const { return caFile_; }

  private:
    void serve(void* context);

    std::filesystem::path caFile_;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<int> connection_ = -1;
    std::atomic<bool> stops_ = false;
    std::thread thread_;
};

} // namespace norvane::bench
