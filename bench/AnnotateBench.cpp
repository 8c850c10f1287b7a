#include "bench/BenchHome.h"
#include "sandbox/Template.h"
#include "sandbox/TemplateIds.h"

#include <norvane/pdf/PdfDocument.h>
#include <norvane/signature/NVMSignatureDrawView.h>
#include <norvane/signing/NVMPTNPDFImageAnnotation.h>
#include <norvane/signing/NVMPTNPDFTextAnnotation.h>

#include <benchmark/benchmark.h>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

#include <algorithm>
#include <cmath>

// Forty tabs drawn on the contract of sixty pages, beside qpdf loading and saving the result. One signature
// is stamped on every other tab: like the result that qpdf loads, it is deflated once and not for each
// document.

namespace norvane::bench {

namespace {

const Data& contract() {
    static const Data pdf = [] {
        const auto& all = sandbox::templateCatalogue();
        const auto isContract = [](const sandbox::Template& each) {
            return each.plan.templateId == sandbox::kSupplyTemplateId;
        };
        return Data(std::find_if(all.begin(), all.end(), isContract)->combinedPdf);
    }();
    return pdf;
}

Image drawnSignature() {
    NVMSignatureDrawView surface({300, 100});
    std::vector<StrokePoint> stroke;
    for (int step = 0; step < 60; ++step)
        stroke.push_back({20.0 + 4 * step, 50 + 35 * std::sin(step / 3.0), step * 0.01});
    surface.drawStroke(stroke);
    return *surface.getImage();
}

const Image& signature() {
    static const Image image = drawnSignature();
    return image;
}

AnnotatedTab tabNumber(int number) {
    AnnotatedTab tab;
    tab.tabId = std::to_string(number);
    tab.type = number % 2 == 0 ? NVMTabTypeText : NVMTabTypeSignHere;
    tab.recipientId = "1";
    tab.originX = 72;
    tab.originY = 100 + 10 * (number % 50);
    tab.width = 120;
    tab.height = 40;
    tab.value = "Entry " + std::to_string(number);
    return tab;
}

Data annotated() {
    const auto document = *PdfDocument::open(contract());
    for (int number = 0; number < 40; ++number) {
        const auto page = *document->page(static_cast<std::size_t>(1 + number * 3 / 2));
        const AnnotatedTab tab = tabNumber(number);
        if (tab.type == NVMTabTypeText)
            NVMPTNPDFTextAnnotation::CreateWithTab(tab, document, page, {});
        else
            NVMPTNPDFImageAnnotation::CreateWithTab(tab, document, page, {})->setContent(signature());
    }
    return *document->save();
}

void annotateKit(benchmark::State& state) {
    benchHome();
    annotated(); // what is made once does not count
    for (auto _ : state)
        benchmark::DoNotOptimize(annotated());
}

void annotateLimit(benchmark::State& state) {
    benchHome();
    const Data result = annotated();
    for (auto _ : state) {
        QPDF pdf;
        pdf.processMemoryFile("contract", reinterpret_cast<const char*>(result.data()), result.size());
        QPDFWriter writer(pdf);
        writer.setOutputMemory();
        writer.setStreamDataMode(qpdf_s_preserve);
        writer.write();
        benchmark::DoNotOptimize(writer.getBufferSharedPointer());
    }
}

BENCHMARK(annotateKit)->Name("annotate 60 pages : qpdf load and save/kit")->Unit(benchmark::kMillisecond);
BENCHMARK(annotateLimit)->Name("annotate 60 pages : qpdf load and save/limit")->Unit(benchmark::kMillisecond);

} // namespace

} // namespace norvane::bench
