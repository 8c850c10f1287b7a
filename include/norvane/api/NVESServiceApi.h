#pragma once

#include <norvane/api/NVESApiClient.h>
#include <norvane/api/NVESOperation.h>
#include <norvane/platform/Data.h>
#include <norvane/record/Record.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

/// A typed result or an error; see NVESCompletion for threads and for what errors tell.
template <class T>
using NVESRecordCompletion = std::function<void(std::shared_ptr<T> result, std::optional<NVMError> error)>;
/// The decoded body of an operation without a record; null when there is none.
using NVESValueCompletion = std::function<void(Value result, std::optional<NVMError> error)>;
/// The file of a download, which the receiver owns and removes, or an error.
using NVESFileCompletion = std::function<void(std::optional<Url> file, std::optional<NVMError> error)>;

struct NVESEnvelopeDefinition;

/// What the service classes share: the client, the headers of every operation of this object, and one way to
/// carry an operation of the table out. Operations return the request's id and throw NVMException "Invalid
/// parameter" when a required parameter is absent. Not synchronised: one object, one thread at a time.
class NVESServiceApi {
  public:
    using Text = std::optional<std::string>;

    void addHeader(const std::string& value, const std::string& forKey);
    void setHeaderValue(const std::string& value, const std::string& forKey) { addHeader(value, forKey); }
    const Dictionary& defaultHeaders() const { return defaultHeaders_; }
    std::size_t requestQueueSize() const { return NVESApiClient::requestQueueSize(); }
    const std::shared_ptr<NVESApiClient>& apiClient() const { return apiClient_; }

    /// Any operation of the table, of whatever service. The result is of the operation's `result`. Throws
    /// also for a parameter that the operation does not have; a body that should be an envelope's but is not
    /// is the deserialisation error.
    std::uint64_t callOperation(const NVESOperation& operation, const NVESOperationArguments& arguments,
                                NVESCompletion completion) const;

  protected:
    /// Without a client, the shared configuration's is taken.
    explicit NVESServiceApi(std::shared_ptr<NVESApiClient> apiClient);
    ~NVESServiceApi() = default;

    using Operation = NVESOperation;

    /// An argument for each placeholder of the operation's path, in their order, and what else it takes.
    struct Arguments {
        std::vector<const Text*> path;
        const void* options = nullptr; ///< a record of the operation's options
        std::string body = {};         ///< JSON
    };
    NVESRequest makeRequest(const Operation& operation, const Arguments& arguments) const;
    std::uint64_t perform(const Operation& operation, const Arguments& arguments,
                          NVESCompletion completion) const;
    /// Clears what goes out as a part of its own from the definition.
    std::uint64_t performOfflineUpload(const Operation& operation, const Text& accountId,
                                       NVESEnvelopeDefinition& definition, NVESCompletion completion) const;

    template <class T>
    static NVESCompletion typed(NVESRecordCompletion<T> handler) {
        return
            [handler = std::move(handler)](const NVESResult& result, const std::optional<NVMError>& error) {
                if (handler) handler(result.record<T>(), error);
            };
    }
    static NVESCompletion untyped(NVESValueCompletion handler);
    static NVESCompletion asFile(NVESFileCompletion handler);

  private:
    std::shared_ptr<NVESApiClient> apiClient_;
    Dictionary defaultHeaders_;
};

} // namespace norvane
