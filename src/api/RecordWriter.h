#pragma once

#include <norvane/record/Record.h>

#include <string>
#include <string_view>

namespace norvane {

/// Appends records as JSON to one text.
class RecordWriter {
  public:
    explicit RecordWriter(std::string& out)
        : out_(out) {}
    void writeRecord(const RecordType& type, const void* record);

  private:
    void writeMember(const Field& field, const void* record);
    void writeKey(std::string_view key);
    void writeText(std::string_view text);
    void writeNumber(double number);
    void writeTexts(const std::vector<std::string>& texts);
    void writeList(const Field& field, const void* record);
    void writeRest(const field::Rest& rest);

    std::string& out_;
};

} // namespace norvane
