#pragma once

#include "sandbox/HttpMessage.h"
#include "sandbox/Json.h"

#include <filesystem>
#include <functional>
#include <mutex>

namespace norvane::sandbox {

/// What is set beside an envelope, a template or the account after it was made: one JSON file for each, whose
/// members stand in for those that it began with. Any thread may call.
class DetailStore {
  public:
    /// The details kept in the file over the initial ones.
    Json read(const std::filesystem::path& file, Json initial = Json::Object()) const;
    /// Changes one member under the store's lock; an answer of 400 and up leaves it as it was.
    Answer change(const std::filesystem::path& file, const std::string& member, const Json& initial,
                  const std::function<Answer(Json& value)>& change);

  private:
    mutable std::mutex mutex_; ///< guards the files
};

} // namespace norvane::sandbox
