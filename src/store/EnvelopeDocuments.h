#pragma once

#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/platform/Result.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/ObjectStore.h>

#include <string>
#include <vector>

namespace norvane {

/// Gives the documents of an envelope that is about to be saved files of their own, with their digests. What
/// it wrote is removed again unless `keep` is called.
class EnvelopeDocuments {
  public:
    explicit EnvelopeDocuments(ObjectStore& store)
        : store_(store) {}
    ~EnvelopeDocuments() { discard(); }
    EnvelopeDocuments(const EnvelopeDocuments&) = delete;
    EnvelopeDocuments& operator=(const EnvelopeDocuments&) = delete;

    /// `envelope` is the domain form of `stored`; their documents stand in the same order. `ownerRow` is the
    /// stored envelope whose files may be taken over, 0 when there is none.
    Failure prepare(const NVMEnvelopeTemplate& envelope, NVMCDEnvelopeDefinition& stored,
                    std::int64_t ownerRow);
    Failure prepare(const NVMDocument& document, NVMCDDocument& stored, std::int64_t ownerRow);
    void keep() { written_.clear(); }
    void discard();

    /// The files that the envelope's documents name.
    static std::vector<std::string> paths(const NVMCDEnvelopeDefinition& envelope);

  private:
    Failure takeFile(NVMCDDocument& stored, std::int64_t ownerRow);
    Failure writeFile(const Data& pdf, NVMCDDocument& stored);

    ObjectStore& store_;
    std::vector<std::string> written_;
};

} // namespace norvane
