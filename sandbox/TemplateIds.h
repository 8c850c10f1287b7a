#pragma once

namespace norvane::sandbox {

/// The templates that every sandbox offers.
/// Two pages, two in-person signers with the roles "Tenant" and "Landlord".
inline constexpr const char* kLeaseTemplateId = "8f3c1d20-5a47-4b9e-9c16-7d0e2ab45f31";
/// One page, one remote signer with the role "Participant".
inline constexpr const char* kConsentTemplateId = "2d9b6e74-0c35-4f81-a7d2-b94e1f6083c5";
/// Sixty pages, one in-person signer with the role "Customer" and 40 tabs.
inline constexpr const char* kSupplyTemplateId = "e61a7f08-9b2d-4c53-8e4f-35c0d1972ab6";
/// Two documents of a page each, one in-person signer with the role "Renter"; has radios and a formula.
inline constexpr const char* kRentalTemplateId = "47c0a9b5-e812-4d36-b05f-6a1d83f27e90";

} // namespace norvane::sandbox
