#include "Commands.h"
#include "Secrets.h"

#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/sdk/NVMManager.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>

#include <CLI/CLI.hpp>

namespace norvane::cli {

namespace {

struct LoginArguments {
    std::string host;
    std::string integratorKey;
    std::string method = "password";
    std::string user;
    std::string accountId;
    std::string userId;
    std::string userName;
    std::string email;
    bool offline = false;
};

struct LoginOutcome {
    std::optional<NVMAccountInfo> info;
    std::optional<NVMError> error;
};

Dictionary describe(const NVMAccountInfo& info) {
    return {{"userId", info.userId},
            {"userName", info.userName},
            {"email", info.email},
            {"accountId", info.accountId},
            {"accountName", info.accountName},
            {"host", info.host ? Value(info.host->absoluteString()) : Value()},
            {"authenticationMethod",
             info.authenticationMethod == NVMAuthenticationMethodAccessToken ? "token" : "api-password"}};
}

std::vector<std::string> lines(const NVMAccountInfo& info) {
    return {"signed in as " + info.userName.value_or("") + " <" + info.email.value_or("") + ">",
            "account " + info.accountId.value_or("") + " at " +
                (info.host ? info.host->absoluteString() : "")};
}

void login(Context& context, const LoginArguments& arguments) {
    const auto host = Url::parse(arguments.host);
    if (!host) {
        context.exit = context.output().error(NVM_errorInvalidInput());
        return;
    }
    if (context.failed(setUpKit())) return;
    const Answer<LoginOutcome> answer;
    const auto completion = [answer](std::optional<NVMAccountInfo> info, std::optional<NVMError> error) {
        answer.give({std::move(info), std::move(error)});
    };
    const NVMNetworkMode mode = arguments.offline ? NVMNetworkModeOffline : NVMNetworkModeOnline;
    if (arguments.method == "password") {
        NVMManager::loginWithUserId(arguments.user, secretFrom("NORVANE_PASSWORD", "Password"),
                                    arguments.integratorKey, *host, completion);
    } else if (arguments.method == "token") {
        NVMManager::loginWithAccessToken(secretFrom("NORVANE_TOKEN", "Access token"), arguments.accountId,
                                         arguments.userId, arguments.userName, arguments.email, *host,
                                         arguments.integratorKey, mode, completion);
    } else {
        NVMManager::loginWithApiPassword(secretFrom("NORVANE_API_PASSWORD", "API password"),
                                         arguments.accountId, arguments.userId, arguments.userName,
                                         arguments.email, *host, arguments.integratorKey, mode, completion);
    }
    const LoginOutcome outcome = answer.wait();
    // What could not be fetched beyond the account is no reason to refuse it.
    const bool isOnlyIncomplete = outcome.error &&
                                  outcome.error->domain == NVM_USER_ADDITIONAL_DATA_FETCH_ERROR &&
                                  NVMManager::NVM_isSetupAndLoginSuccessful();
    if ((outcome.error && !isOnlyIncomplete) || !outcome.info) {
        context.failed(outcome.error ? *outcome.error : NVM_errorFetchAccountInformation());
        return;
    }
    Dictionary document = describe(*outcome.info);
    if (outcome.error) {
        warn(outcome.error->localizedDescription());
        document["warning"] = Output::describe(*outcome.error);
    }
    context.output().result(document, lines(*outcome.info));
}

void whoami(Context& context) {
    if (context.failed(openKit())) return;
    const auto account = NVMCredentials::primaryCredentials();
    if (!account) {
        context.failed(NVM_errorUserNotLoggedIn());
        return;
    }
    const NVMAccountInfo info(*account);
    const Dictionary document = describe(info);
    context.output().result(document, lines(info));
}

std::vector<std::string> settingLines(const char* title, const std::optional<Dictionary>& settings) {
    if (!settings) return {std::string(title) + ": not fetched yet"};
    std::vector<std::string> lines{std::string(title) + ":"};
    for (const auto& [name, value] : *settings)
        lines.push_back("  " + name + " = " + value.stringValue().value_or(""));
    return lines;
}

/// What is stored of the account, or what the service says of it now.
void showAccount(Context& context, bool refresh) {
    if (context.failed(openKit())) return;
    const auto account = NVMCredentials::primaryCredentials();
    if (!account) {
        context.failed(NVM_errorUserNotLoggedIn());
        return;
    }
    if (refresh) {
        const Answer<Failure> answer;
        NVMManager::syncAdditionalDataForAccount(
            account, [answer](std::optional<NVMError> error) { answer.give(std::move(error)); });
        if (context.failed(answer.wait())) return;
    }
    Dictionary document = describe(NVMAccountInfo(*account));
    document["accountSettings"] = account->accountSettings ? Value(*account->accountSettings) : Value();
    document["userSettings"] = account->userSettings ? Value(*account->userSettings) : Value();
    document["consumerDisclosureId"] = account->consumerDisclosureId;
    document["canOfflineSend"] = account->canOfflineSend();
    std::vector<std::string> lines{"account " + account->accountId.value_or("") + " " +
                                       account->accountName.value_or(""),
                                   "disclosure " + account->consumerDisclosureId.value_or("not fetched yet")};
    for (const auto& part : {settingLines("account settings", account->accountSettings),
                             settingLines("user settings", account->userSettings)})
        lines.insert(lines.end(), part.begin(), part.end());
    context.output().result(document, lines);
}

void logout(Context& context, bool force) {
    if (context.failed(openKit())) return;
    const std::size_t waiting = NVMEnvelopeSynchronizer::sharedSynchronizer()->pendingEnvelopeCount();
    if (waiting > 0 && !force) {
        context.failed(NVMError::make(
            "norvane.command", 0,
            std::to_string(waiting) + " envelope(s) wait for upload and would be lost. Run \"norvane sync\" "
                                      "first, or sign out with --force.",
            "ENVELOPES_WAIT_FOR_UPLOAD"));
        return;
    }
    NVMManager::clearCredentialsAndCachedTemplates();
    context.output().result(Dictionary{{"signedOut", true}}, {"signed out"});
}

} // namespace

void addAccountCommands(CLI::App& program, Context& context) {
    auto arguments = std::make_shared<LoginArguments>();
    auto* loginCommand = program.add_subcommand("login", "Signs in and keeps the credentials");
    loginCommand->add_option("--host", arguments->host, "Base address of the service")->required();
    loginCommand->add_option("--integrator-key", arguments->integratorKey, "The application's key")
        ->required();
    loginCommand->add_option("--method", arguments->method, "How to sign in")
        ->check(CLI::IsMember({"password", "token", "api-password"}));
    loginCommand->add_option("--user", arguments->user, "User name, for the password method");
    loginCommand->add_option("--account-id", arguments->accountId, "Account id, for the other two");
    loginCommand->add_option("--user-id", arguments->userId, "User id, for the other two");
    loginCommand->add_option("--user-name", arguments->userName, "The user's name, for the other two");
    loginCommand->add_option("--email", arguments->email, "The user's e-mail address, for the other two");
    loginCommand->add_flag("--offline", arguments->offline,
                           "Sign in without asking the service (the other two)");
    loginCommand->callback([&context, arguments] {
        if (arguments->method == "password" && arguments->user.empty()) throw CLI::RequiredError("--user");
        login(context, *arguments);
    });

    program.add_subcommand("whoami", "The stored account, without secrets")->callback([&context] {
        whoami(context);
    });

    auto* accountCommand = program.add_subcommand("account", "The signed-in account");
    accountCommand->require_subcommand(1);
    auto refresh = std::make_shared<bool>(false);
    auto* showCommand =
        accountCommand->add_subcommand("show", "Its name, settings and consumer disclosure, without secrets");
    showCommand->add_flag("--refresh", *refresh, "Fetch them from the service first");
    showCommand->callback([&context, refresh] { showAccount(context, *refresh); });

    auto force = std::make_shared<bool>(false);
    auto* logoutCommand =
        program.add_subcommand("logout", "Signs out; removes cached templates and envelopes");
    logoutCommand->add_flag("--force", *force, "Also when envelopes wait for upload: they are lost");
    logoutCommand->callback([&context, force] { logout(context, *force); });
}

} // namespace norvane::cli
