#include "tests/support/SamplePdf.h"

#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace norvane {
namespace {

constexpr const char* kResolution = "60";

std::string outputOf(const std::string& command, int& status) {
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    char chunk[4096];
    for (std::size_t size = 0; (size = fread(chunk, 1, sizeof chunk, pipe)) > 0;)
        output.append(chunk, size);
    status = pclose(pipe);
    return output;
}

RenderedPage parsePpm(const std::string& ppm) {
    RenderedPage page;
    int maximum = 0;
    std::istringstream text(ppm);
    std::string magic;
    text >> magic >> page.width >> page.height >> maximum;
    const auto size = static_cast<std::size_t>(page.width) * static_cast<std::size_t>(page.height) * 3;
    if (magic != "P6" || maximum != 255 || ppm.size() < size) throw std::runtime_error("no picture: " + ppm);
    page.rgb = ppm.substr(ppm.size() - size);
    return page;
}

RenderedPage render(const std::string& command) {
    int status = 0;
    const std::string output = outputOf(command, status);
    if (status != 0) throw std::runtime_error("viewer failed: " + command);
    return parsePpm(output);
}

} // namespace

Data pdfOfObjects(const std::vector<std::string>& objects, const std::string& trailerEntries) {
    std::ostringstream pdf;
    pdf << "%PDF-1.7\n";
    std::vector<std::streamoff> offsets;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        offsets.push_back(pdf.tellp());
        pdf << i + 1 << " 0 obj\n" << objects[i] << "\nendobj\n";
    }
    const std::streamoff start = pdf.tellp();
    pdf << "xref\n0 " << objects.size() + 1 << "\n0000000000 65535 f \n";
    for (const std::streamoff offset : offsets) {
        char line[32];
        snprintf(line, sizeof line, "%010lld 00000 n \n", static_cast<long long>(offset));
        pdf << line;
    }
    pdf << "trailer\n<< /Size " << objects.size() + 1 << " /Root 1 0 R " << trailerEntries
        << " >>\nstartxref\n"
        << start << "\n%%EOF\n";
    return Data(pdf.str());
}

Data blankPdf(std::size_t pages, const std::string& pageEntries) {
    std::string kids;
    for (std::size_t i = 0; i < pages; ++i)
        kids += std::to_string(i + 3) + " 0 R ";
    std::vector<std::string> objects{"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Count " +
                                                                              std::to_string(pages) +
                                                                              " /Kids [" + kids + "] >>"};
    objects.insert(objects.end(), pages, "<< /Type /Page /Parent 2 0 R " + pageEntries + " >>");
    return pdfOfObjects(objects);
}

bool RenderedPage::isInk(int x, int y) const {
    return std::min({at(x, y, 0), at(x, y, 1), at(x, y, 2)}) < 160;
}

int RenderedPage::inkCount(int x, int y, int columns, int rows) const {
    int count = 0;
    for (int row = y; row < y + rows; ++row)
        for (int column = x; column < x + columns; ++column)
            count += isInk(column, row) ? 1 : 0;
    return count;
}

RenderedPage renderWithPoppler(const Data& pdf, int page) {
    const TemporaryFolder folder;
    const std::string number = std::to_string(page);
    const std::string file = folder.file("page.pdf", pdf.view()).string();
    return render(std::string("pdftoppm -r ") + kResolution + " -f " + number + " -l " + number + " " + file +
                  " 2>/dev/null");
}

RenderedPage renderWithMupdf(const Data& pdf, int page) {
    const TemporaryFolder folder;
    const std::string file = folder.file("page.pdf", pdf.view()).string();
    return render(std::string("mutool draw -q -F ppm -c rgb -o - -r ") + kResolution + " " + file + " " +
                  std::to_string(page) + " 2>/dev/null");
}

std::string problemsOf(const Data& pdf) {
    const TemporaryFolder folder;
    const std::string file = folder.file("checked.pdf", pdf.view()).string();
    int status = 0;
    const std::string output = outputOf("qpdf --check " + file + " 2>&1", status);
    return status == 0 ? std::string() : output;
}

} // namespace norvane
