#include "src/pdf/InputBounds.h"
#include "src/pdf/PageCopier.h"
#include "src/pdf/PdfErrors.h"
#include "src/pdf/State.h"

#include <norvane/pdf/PdfDocument.h>
#include <norvane/platform/Files.h>

#include <qpdf/Pl_String.hh>
#include <qpdf/QPDFWriter.hh>

#include <string>
#include <string_view>

namespace norvane {
namespace {

/// A signature's dictionary says which bytes of the file it covers.
bool isSignature(QPDFObjectHandle object) { return object.isDictionary() && object.hasKey("/ByteRange"); }

bool holdsSignature(QPDFObjectHandle object) {
    return isSignature(object) || (object.isDictionary() && isSignature(object.getKey("/V")));
}

Failure readDocument(PdfDocument::State& state) {
    QPDF& qpdf = *state.qpdf;
    qpdf.setSuppressWarnings(true);
    qpdf.setAttemptRecovery(false);
    qpdf.processMemoryFile("document", state.bytes.view().data(), state.bytes.size());
    if (qpdf.isEncrypted()) return pdfError(PdfErrorCode::Encrypted);
    // Every object is read now, so that damage shows here and not while the user signs.
    for (const QPDFObjectHandle& object : qpdf.getAllObjects())
        state.hasDigitalSignatures = state.hasDigitalSignatures || holdsSignature(object);
    if (auto failure = firstWarning(qpdf)) return failure;
    if (auto failure = checkObjectGraph(qpdf)) return failure;
    state.pages = qpdf.getAllPages();
    state.sourcePageCounts = {state.pages.size()};
    return firstWarning(qpdf);
}

/// Gives the file an identifier made of its bytes. qpdf's own would digest every small piece as it is
/// written, which takes as long as all the rest.
void setIdentifier(std::string& file) {
    constexpr std::string_view kStatic =
        "<31415926535897932384626433832795>"; // what qpdf writes for a static one
    const std::string digest = sha256Hex(file).substr(0, kStatic.size() - 2);
    for (auto at = file.find(kStatic, file.rfind("/ID [")); at != std::string::npos;
         at = file.find(kStatic, at))
        file.replace(at + 1, digest.size(), digest);
}

} // namespace

std::size_t PdfDocument::State::pageNumberOf(const QPDFObjectHandle& page) const {
    for (std::size_t i = 0; i < pages.size(); ++i)
        if (pages[i].isSameObjectAs(page)) return i + 1;
    return 0;
}

PdfDocument::PdfDocument(std::shared_ptr<State> state)
    : state_(std::move(state)) {}
PdfDocument::~PdfDocument() = default;

Result<std::shared_ptr<PdfDocument>> PdfDocument::open(const Data& bytes) {
    if (bytes.size() > kMaximumBytes) return pdfError(PdfErrorCode::TooLarge);
    if (auto failure = checkCrossReferences(bytes.view())) return *failure;
    auto state = std::make_shared<State>();
    state->bytes = bytes;
    if (auto failure = guarded([&] { return readDocument(*state); })) return *failure;
    return std::shared_ptr<PdfDocument>(new PdfDocument(std::move(state)));
}

Result<std::shared_ptr<PdfDocument>>
PdfDocument::join(const std::vector<std::shared_ptr<PdfDocument>>& documents) {
    auto state = std::make_shared<State>();
    state->qpdf->setSuppressWarnings(true);
    state->qpdf->emptyPDF();
    for (const auto& document : documents) {
        if (auto failure = insertPages(*state, document->state_, state->pages.size())) return *failure;
    }
    if (state->pages.empty()) return pdfError(PdfErrorCode::NoSuchPage, "nothing to join");
    return std::shared_ptr<PdfDocument>(new PdfDocument(std::move(state)));
}

std::size_t PdfDocument::pageCount() const {
    const auto guard = lock();
    return state_->pages.size();
}

std::vector<std::size_t> PdfDocument::sourcePageCounts() const {
    const auto guard = lock();
    return state_->sourcePageCounts;
}

Result<PdfPage> PdfDocument::page(std::size_t number) const {
    const auto guard = lock();
    if (number == 0 || number > state_->pages.size()) return pdfError(PdfErrorCode::NoSuchPage);
    return PdfPage(std::make_shared<const PdfPage::State>(PdfPage::State{state_, state_->pages[number - 1]}));
}

Failure PdfDocument::insertDocument(const PdfDocument& other, std::size_t position) {
    return insertPages(*state_, other.state_, position);
}

bool PdfDocument::hasDigitalSignatures() const {
    const auto guard = lock();
    return state_->hasDigitalSignatures;
}

Result<Data> PdfDocument::save() const {
    const auto guard = lock();
    std::string output;
    output.reserve(state_->bytes.size() + state_->bytes.size() / 4);
    const auto failure = guarded([&]() -> Failure {
        state_->drawStaleLooks();
        Pl_String target("document", nullptr, output);
        QPDFWriter writer(*state_->qpdf);
        writer.setOutputPipeline(&target);
        writer.setStaticID(true);
        writer.setDecodeLevel(qpdf_dl_none);
        writer.setCompressStreams(false);
        writer.setMinimumPDFVersion("1.4"); // for transparency
        writer.write();
        setIdentifier(output);
        return firstWarning(*state_->qpdf);
    });
    if (failure) return *failure;
    return Data(std::move(output));
}

std::unique_lock<std::recursive_mutex> PdfDocument::lock() const { return std::unique_lock(state_->mutex); }

} // namespace norvane
