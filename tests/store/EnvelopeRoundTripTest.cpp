#include "src/model/mapping/NotKept.h"
#include "tests/model/RecordFilling.h"
#include "tests/store/RandomTree.h"
#include "tests/store/StoreFixture.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/store/NVMCDEnvelopes.h>

#include <rapidcheck.h>

#include <cstdlib>

namespace norvane {
namespace {

using EnvelopeRoundTrip = StoreFixture;

std::shared_ptr<NVMEnvelopeDefinition> saved(const NVMEnvelopeDefinition& envelope,
                                             ManagedObjectContext& context) {
    const auto row = std::make_shared<NVMCDEnvelopeDefinition>();
    nvm_mapToNVMCDEnvelope(envelope, *row);
    context.insert(row);
    const auto error = context.save();
    RC_ASSERT(error == std::nullopt);
    const auto stored = context.objectWithID<NVMCDEnvelopeDefinition>(row->objectID);
    RC_ASSERT(stored.ok());
    return std::make_shared<NVMEnvelopeDefinition>(**stored, true);
}

bool isNotKept(const RecordType& type, const Field& field) {
    return findNotKept(type, field.name) != nullptr;
}

/// Images are scaled again at every reading.
bool isImageFrame(const RecordType& type, const Field& field) {
    return type.find("imageData") != nullptr && field.name == "frame";
}

TEST_F(EnvelopeRoundTrip, AnEnvelopeComesBackAsItWasPutIn) {
    ::setenv("RC_PARAMS", "max_success=25", 0); // the caller's word counts
    const bool holds = rc::check([this](unsigned seed) {
        const auto envelope = RandomTree(seed).make<NVMEnvelopeDefinition>();
        const auto read = saved(*envelope, context());
        RC_ASSERT(differences(*envelope, *read, &isNotKept) == std::vector<std::string>{});
        RC_ASSERT(differences(*read, *saved(*read, context()), &isImageFrame) == std::vector<std::string>{});
    });
    EXPECT_TRUE(holds);
}

} // namespace
} // namespace norvane
