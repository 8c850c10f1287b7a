#include "bench/Allocations.h"
#include "bench/TemplateJson.h"

#include <norvane/api/NVESTemplates.h>
#include <norvane/api/RecordJson.h>

#include <benchmark/benchmark.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <algorithm>
#include <random>
#include <vector>

// Wire records beside the raw parser and the raw writer, on a template of 1,000 tabs.

namespace norvane::bench {

namespace {

constexpr int kTabs = 1000;

const std::string& json() {
    static const std::string text = templateJson(kTabs);
    return text;
}

using RapidWriter = rapidjson::Writer<rapidjson::StringBuffer>;

/// With the members of objects in the order in which they come, or in any.
void writeElement(RapidWriter& writer, simdjson::dom::element element, std::mt19937* shuffle = nullptr) {
    switch (element.type()) {
    case simdjson::dom::element_type::ARRAY:
        writer.StartArray();
        for (auto child : simdjson::dom::array(element))
            writeElement(writer, child, shuffle);
        writer.EndArray();
        break;
    case simdjson::dom::element_type::OBJECT: {
        std::vector<simdjson::dom::key_value_pair> shuffled;
        const auto write = [&](const simdjson::dom::key_value_pair& member) {
            writer.Key(member.key.data(), static_cast<rapidjson::SizeType>(member.key.size()));
            writeElement(writer, member.value, shuffle);
        };
        writer.StartObject();
        for (const simdjson::dom::key_value_pair member : simdjson::dom::object(element))
            shuffle ? shuffled.push_back(member) : write(member);
        if (shuffle) std::shuffle(shuffled.begin(), shuffled.end(), *shuffle);
        std::for_each(shuffled.begin(), shuffled.end(), write);
        writer.EndObject();
        break;
    }
    case simdjson::dom::element_type::STRING: {
        const std::string_view text(element);
        writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        break;
    }
    default:
        writer.Double(double(element));
        break;
    }
}

/// The same template, each tab with its keys in an order of its own.
const std::string& shuffledJson() {
    static const std::string text = [] {
        simdjson::dom::parser parser;
        rapidjson::StringBuffer buffer;
        RapidWriter rapid(buffer);
        std::mt19937 random(1);
        writeElement(rapid, parser.parse(json()), &random);
        return std::string(buffer.GetString(), buffer.GetSize());
    }();
    return text;
}

/// Says how much JSON a second went through, and what a tab's record took.
void report(benchmark::State& state, std::size_t allocationsBefore) {
    const auto iterations = static_cast<double>(state.iterations());
    state.SetBytesProcessed(static_cast<std::int64_t>(iterations) * static_cast<std::int64_t>(json().size()));
    state.counters["allocations a record"] =
        static_cast<double>(allocations() - allocationsBefore) / iterations / kTabs;
}

void decodeKit(benchmark::State& state, const std::string& (*json)()) {
    const std::string& text = json();
    const std::size_t before = allocations();
    for (auto _ : state) {
        auto record = readRecord<NVESEnvelopeTemplate>(text);
        if (!record) state.SkipWithError("the record could not be read");
        benchmark::DoNotOptimize(record);
    }
    report(state, before);
}

void decodeLimit(benchmark::State& state, const std::string& (*json)()) {
    simdjson::dom::parser parser;
    const simdjson::padded_string padded(json());
    const std::size_t before = allocations();
    for (auto _ : state) {
        auto document = parser.parse(padded);
        if (document.error()) state.SkipWithError("simdjson could not parse");
        benchmark::DoNotOptimize(document);
    }
    report(state, before);
}

void encodeKit(benchmark::State& state) {
    const auto record = readRecord<NVESEnvelopeTemplate>(json());
    const std::size_t before = allocations();
    for (auto _ : state) {
        std::string text = writeRecord(**record);
        benchmark::DoNotOptimize(text.data());
    }
    report(state, before);
}

void encodeLimit(benchmark::State& state) {
    simdjson::dom::parser parser;
    const simdjson::dom::element document = parser.parse(json());
    const std::size_t before = allocations();
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        RapidWriter writer(buffer);
        writeElement(writer, document);
        benchmark::DoNotOptimize(buffer.GetString());
    }
    report(state, before);
}

BENCHMARK_CAPTURE(decodeKit, inOrder, json)
    ->Name("decode 1,000 tabs : simdjson DOM/kit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decodeLimit, inOrder, json)
    ->Name("decode 1,000 tabs : simdjson DOM/limit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decodeKit, shuffled, shuffledJson)
    ->Name("decode, keys in any order : simdjson DOM/kit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decodeLimit, shuffled, shuffledJson)
    ->Name("decode, keys in any order : simdjson DOM/limit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(encodeKit)->Name("encode 1,000 tabs : RapidJSON writer/kit")->Unit(benchmark::kMillisecond);
BENCHMARK(encodeLimit)->Name("encode 1,000 tabs : RapidJSON writer/limit")->Unit(benchmark::kMillisecond);

} // namespace

} // namespace norvane::bench
