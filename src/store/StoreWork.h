#pragma once

#include "src/store/Connection.h"

#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/ObjectStore.h>

#include <functional>

namespace norvane {

/// Lets the store's own sources work on connections. Everything that the work throws as SQLite::Exception
/// becomes the error that is handed back.
class StoreWork {
  public:
    using Work = std::function<void(Connection&)>;

    static Failure read(ObjectStore& store, const Work& work);
    /// In a transaction of its own. No other write of this process runs meanwhile, so the work calls nobody.
    static Failure write(ObjectStore& store, const Work& work);
    /// Joins the transaction that saves the context, after the changes made so far.
    static void join(ManagedObjectContext& context, Work work);

    /// The identifier under which this process keeps its place in the journal of files.
    static const std::string& session(ObjectStore& store);
};

} // namespace norvane
