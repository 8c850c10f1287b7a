#include "src/platform/Adapters.h"
#include "src/platform/BlockOperation.h"
#include "src/platform/CountingGroup.h"
#include "src/platform/SerialQueue.h"
#include "src/platform/ThreadQueue.h"
#include "src/platform/ThreadedOperationQueue.h"

namespace norvane {

namespace {

class AsioExecutors final : public Executors {
  public:
    explicit AsioExecutors(std::shared_ptr<TaskQueue> hostMainQueue)
        : mainQueue_(hostMainQueue ? std::move(hostMainQueue)
                                   : std::make_shared<ThreadQueue>("norvane-main")) {}

    std::shared_ptr<TaskQueue> mainQueue() override { return mainQueue_; }

    std::shared_ptr<TaskQueue> makeSerialQueue(std::string label) override {
        return std::make_shared<SerialQueue>(std::move(label), pool_);
    }

    std::shared_ptr<OperationQueue> makeOperationQueue(std::string name) override {
        return std::make_shared<ThreadedOperationQueue>(std::move(name));
    }

    std::shared_ptr<Operation> makeOperation(std::string name, Task block) override {
        return std::make_shared<BlockOperation>(std::move(name), std::move(block));
    }

    std::shared_ptr<TaskGroup> makeGroup() override { return std::make_shared<CountingGroup>(); }

  private:
    const WorkerPool pool_;
    const std::shared_ptr<TaskQueue> mainQueue_;
};

} // namespace

std::shared_ptr<Executors> makeAsioExecutors(std::shared_ptr<TaskQueue> hostMainQueue) {
    return std::make_shared<AsioExecutors>(std::move(hostMainQueue));
}

} // namespace norvane
