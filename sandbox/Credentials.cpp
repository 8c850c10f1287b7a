#include "sandbox/Credentials.h"

#include "sandbox/Json.h"
#include "sandbox/PrivateFile.h"
#include "sandbox/Text.h"

namespace norvane::sandbox {

namespace {

Credentials fresh() {
    Credentials made;
    made.userName = "Morgan Ellery";
    made.email = "morgan.ellery@harbour-and-finch.example";
    made.password = randomHex(12);
    made.integratorKey = newUuid();
    made.userId = "5b1f6a52-7c0e-4d1b-9a43-2e8c6f90d417";
    made.apiPassword = randomHex(20);
    made.accessToken = randomHex(32);
    made.accountId = "4180362";
    made.accountIdGuid = "c7a4e0d9-31f6-4b85-8e72-90d5b3a1f648";
    made.accountName = "Harbour & Finch";
    return made;
}

struct Field {
    const char* key;
    std::string Credentials::*member;
};

constexpr Field kFields[] = {
    {"userName", &Credentials::userName},
    {"email", &Credentials::email},
    {"password", &Credentials::password},
    {"integratorKey", &Credentials::integratorKey},
    {"userId", &Credentials::userId},
    {"apiPassword", &Credentials::apiPassword},
    {"accessToken", &Credentials::accessToken},
    {"accountId", &Credentials::accountId},
    {"accountIdGuid", &Credentials::accountIdGuid},
    {"accountName", &Credentials::accountName},
};

} // namespace

Credentials prepareCredentials(const std::filesystem::path& file) {
    Credentials credentials;
    const Json kept = parseJson(readFile(file).value_or("")).value;
    bool whole = true;
    for (const Field& field : kFields) {
        credentials.*field.member = kept.text(field.key);
        whole = whole && !(credentials.*field.member).empty();
    }
    if (whole) return credentials;
    credentials = fresh();
    Json json;
    for (const Field& field : kFields)
        json.set(field.key, credentials.*field.member);
    writePrivateFile(file, json.write(true) + "\n");
    return credentials;
}

} // namespace norvane::sandbox
