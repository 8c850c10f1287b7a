#pragma once

#include <norvane/model/NVMEnvelopeDefinition.h>

#include <memory>

namespace norvane {

struct NVESEnvelopeDefinition;
struct NVMCDDocument;
struct NVMCDEnvelopeDefinition;
struct NVMCDRecipient;
struct NVMCDTab;
struct NVMCDTabs;

// The conversions that carry an envelope between its forms; those into a domain record are constructors of
// the record. Nothing is fetched or saved here. Any thread may call.

// Domain to store. Everything that a stored record owns is made anew, but for an envelope's documents: those
// are found by their identifier and keep what the store alone knows of them. What no domain record has
// (bookkeeping of caching and upload) stays as it is. Read back, an envelope is as it was put in but for the
// fields that NotKept.cpp lists.

void nvm_mapToNVMCDEnvelope(const NVMEnvelopeTemplate& envelope, NVMCDEnvelopeDefinition& cdEnvelope);
void nvm_mapToNvmcdDocument(const NVMDocument& document, NVMCDDocument& cdDocument);
/// A recipient of any kind, with its tabs.
void nvm_mapToNvmcdRecipient(const NVMRecipient& recipient, NVMCDRecipient& cdRecipient);
/// A tab of any kind. What the stored tab held of another kind is gone afterwards.
void nvm_mapNvmcdTab(NVMCDTab& cdTab, const NVMTab& fromNVMTab);
std::shared_ptr<NVMCDTabs> nvmcdTabsFromNVMTabs(const NVMTabs& tabs);

// Store to wire.

/// The envelope as it is uploaded: `nvm_apiEnvelopeFromCDEnvelopeDefinition` with the status "sent".
std::shared_ptr<NVESEnvelopeDefinition>
createEnvelopeRequestForEnvelope(const NVMCDEnvelopeDefinition& envelope);
/// Content and settings of the envelope, nothing of its identity, dates and addresses. Recipients and tabs of
/// a type that names no kind are left out. Documents name their file in `fileSandboxURL`. A signer who signs
/// offline without a client user id gets a fresh one each time.
std::shared_ptr<NVESEnvelopeDefinition>
nvm_apiEnvelopeFromCDEnvelopeDefinition(const NVMCDEnvelopeDefinition& envelope);

} // namespace norvane
