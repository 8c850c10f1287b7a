#pragma once

#include "sandbox/HttpMessage.h"
#include "sandbox/Template.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace norvane::sandbox {

/// The templates of one sandbox: those that every sandbox offers, those made here, and what became of either.
/// One that was made or changed has a folder of its own. Any thread may call.
class TemplateStore {
  public:
    using Pointer = std::shared_ptr<const Template>;

    /// Takes up what is kept in the folder from earlier runs.
    explicit TemplateStore(std::filesystem::path folder);

    std::vector<Pointer> all() const; ///< the offered ones, then the others in the order of their making
    Pointer find(const std::string& templateId) const; ///< null when there is none
    /// Throws std::runtime_error when it cannot be kept.
    void add(Template made);
    /// Changes a known template under the store's lock; an answer of 400 and up leaves it as it was. Pages
    /// are counted and joined anew.
    Answer change(const std::string& templateId, const std::function<Answer(Template&)>& change);

  private:
    void load(const std::filesystem::path& folder);
    void keep(Template changed);
    Pointer* findKept(const std::string& templateId);

    const std::filesystem::path folder_;
    mutable std::mutex mutex_;
    std::vector<Pointer> kept_; ///< guarded by mutex_; what is here hides an offered one of its id
};

} // namespace norvane::sandbox
