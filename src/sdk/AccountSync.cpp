#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVMApi.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMAccount.h>

#include <mutex>

namespace norvane {
namespace {

/// The name/value list of the service as a dictionary; pairs that lack either are left out.
Dictionary dictionaryForm(const field::List<NVESNameValue>& pairs) {
    Dictionary dictionary;
    if (!pairs) return dictionary;
    for (const auto& pair : *pairs) {
        if (pair->name && pair->value) dictionary.insert_or_assign(*pair->name, *pair->value);
    }
    return dictionary;
}

/// Hands a fetched record to `store`, then ends the fetch.
template <class Record, class Store>
auto storing(NVMAccount::Completion completion, Store store) {
    return [completion = std::move(completion),
            store = std::move(store)](std::shared_ptr<Record> record, const std::optional<NVMError>& error) {
        Failure failure = error;
        if (!failure && !record) failure = NVM_errorFetchAccountInformation();
        if (!failure) store(*record);
        if (completion) completion(failure);
    };
}

/// The fan-out and its join.
class AdditionalDataSync : public std::enable_shared_from_this<AdditionalDataSync> {
  public:
    AdditionalDataSync(std::shared_ptr<NVMAccount> account, NVMAccount::Completion completion)
        : account_(std::move(account))
        , completion_(std::move(completion)) {}

    void start() {
        auto self = shared_from_this();
        account_->syncAccountNameWithCompletion([self](Failure error) { self->end(self->hasName_, error); });
        account_->syncAccountSettingsWithCompletion([self](Failure error) { self->settingsCame(error); });
        account_->syncUserSettingsWithCompletion(
            [self](Failure error) { self->end(self->hasUserSettings_, error); });
    }

  private:
    /// The disclosure is started, or counts as done, before the settings join the others.
    void settingsCame(const Failure& error) {
        if (!error && account_->canOfflineSend()) {
            account_->syncConsumerDisclosureWithCompletion(
                [self = shared_from_this()](Failure disclosureError) {
                    self->end(self->hasDisclosure_, disclosureError);
                });
        } else {
            const std::lock_guard lock(mutex_);
            hasDisclosure_ = true;
        }
        end(hasSettings_, error);
    }

    void end(bool& done, const Failure& error) {
        {
            const std::lock_guard lock(mutex_);
            done = true;
            lastError_ = error; // whoever ends last decides, also with a success: deliberate
            if (isFinished_ || !(hasName_ && hasSettings_ && hasUserSettings_ && hasDisclosure_)) return;
            isFinished_ = true;
        }
        if (completion_) completion_(lastError_);
    }

    const std::shared_ptr<NVMAccount> account_;
    const NVMAccount::Completion completion_;
    std::mutex mutex_; ///< guards all below
    bool hasName_ = false;
    bool hasSettings_ = false;
    bool hasUserSettings_ = false;
    bool hasDisclosure_ = false;
    bool isFinished_ = false;
    Failure lastError_; ///< read without the mutex once finished
};

} // namespace

void NVMAccount::syncAccountNameWithCompletion(Completion completion) {
    NVMApi::getAccountForAccountId(
        accountId,
        storing<NVESAccountInformation>(std::move(completion),
                                        [self = shared_from_this()](const NVESAccountInformation& answer) {
                                            self->accountName = answer.accountName;
                                        }));
}

void NVMAccount::syncAccountSettingsWithCompletion(Completion completion) {
    NVMApi::getAccountSettingsForAccountId(
        accountId,
        storing<NVESAccountSettingsInformation>(
            std::move(completion), [self = shared_from_this()](const NVESAccountSettingsInformation& answer) {
                self->accountSettings = dictionaryForm(answer.accountSettings);
            }));
}

void NVMAccount::syncUserSettingsWithCompletion(Completion completion) {
    NVMApi::getUserSettingsForAccountId(
        accountId, userId,
        storing<NVESUserSettingsInformation>(
            std::move(completion), [self = shared_from_this()](const NVESUserSettingsInformation& answer) {
                self->userSettings = dictionaryForm(answer.userSettings);
            }));
}

void NVMAccount::syncConsumerDisclosureWithCompletion(Completion completion) {
    NVMApi::getConsumerDisclosureForAccountId(
        accountId,
        storing<NVESConsumerDisclosure>(std::move(completion),
                                        [self = shared_from_this()](const NVESConsumerDisclosure& answer) {
                                            self->consumerDisclosureId = answer.accountEsignId;
                                            self->consumerDisclosure = answer.esignAgreement;
                                        }));
}

void NVMAccount::syncAdditionalDataWithCompletion(Completion completion) {
    std::make_shared<AdditionalDataSync>(shared_from_this(), std::move(completion))->start();
}

} // namespace norvane
