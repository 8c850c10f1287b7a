#include "tests/apps/CommandLine.h"

#include <norvane/platform/Json.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

namespace norvane {

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

Value CommandLine::Run::json() const {
    const auto document = parseJson(output);
    if (document) return *document;
    ADD_FAILURE() << "no JSON document: " << output << errors;
    return {};
}

namespace {

sandbox::SandboxService::Options optionsIn(const std::filesystem::path& folder) {
    sandbox::SandboxService::Options options;
    options.dataFolder = folder;
    return options;
}

} // namespace

CommandLine::CommandLine()
    : service_(optionsIn(folder_.path() / "service")) {
    service_.start();
}

testing::KillTracer::Command CommandLine::command(const std::filesystem::path& home,
                                                  const std::vector<std::string>& arguments) const {
    testing::KillTracer::Command command;
    command.arguments = {NORVANE_PROGRAM, "--home", home.string(), "--cacert", service_.caFile().string(),
                         "--credentials", "file"};
    command.arguments.insert(command.arguments.end(), arguments.begin(), arguments.end());
    command.environment = {"NORVANE_PASSWORD=" + service_.credentials().password, "LANG=C.UTF-8",
                           // The leak checker cannot run beside a tracer.
                           "ASAN_OPTIONS=detect_leaks=0"};
    command.root = home.string();
    command.outputFile = (folder_.path() / "output").string();
    return command;
}

CommandLine::Run CommandLine::run(const std::vector<std::string>& arguments) const {
    return runIn(home_, arguments);
}

CommandLine::Run CommandLine::runIn(const std::filesystem::path& home,
                                    const std::vector<std::string>& arguments) const {
    const auto command = this->command(home, arguments);
    const std::string errorFile = command.outputFile + ".errors";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, command.outputFile.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    pid_t process = -1;
    const int spawned =
        posix_spawn(&process, NORVANE_PROGRAM, &actions, nullptr, pointersTo(command.arguments).data(),
                    pointersTo(command.environment).data());
    posix_spawn_file_actions_destroy(&actions);
    Run run;
    if (spawned != 0) {
        ADD_FAILURE() << "cannot start " << NORVANE_PROGRAM;
        return run;
    }
    int status = 0;
    waitpid(process, &status, 0);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    run.output = contentOf(command.outputFile);
    run.errors = contentOf(errorFile);
    return run;
}

void CommandLine::signIn() const {
    const Run login = run({"login", "--host", service_.url(), "--integrator-key",
                           service_.credentials().integratorKey, "--user", service_.credentials().userName});
    ASSERT_EQ(login.status, 0) << login.errors;
}

void CommandLine::cacheLease() const {
    const Run cached = run({"templates", "cache", leaseId()});
    ASSERT_EQ(cached.status, 0) << cached.errors;
}

std::filesystem::path CommandLine::leaseScript(const std::function<void(Dictionary&)>& edit) const {
    const std::filesystem::path demo = std::filesystem::path(NORVANE_SOURCE_FOLDER) / "docs" / "demo";
    for (const auto& entry : std::filesystem::directory_iterator(demo))
        std::filesystem::copy(entry.path(), folder_.path() / entry.path().filename(),
                              std::filesystem::copy_options::overwrite_existing);
    Dictionary script = *parseJson(contentOf(demo / "lease-script.json"))->asDictionary();
    Dictionary defaults = *script["defaults"].asDictionary();
    Array recipients;
    for (const Value& entry : *defaults["recipientDefaults"].asArray()) {
        Dictionary recipient = *entry.asDictionary();
        recipient["recipientName"] = service_.credentials().userName;
        recipient["recipientEmail"] = service_.credentials().email;
        recipients.push_back(std::move(recipient));
    }
    defaults["recipientDefaults"] = std::move(recipients);
    script["defaults"] = std::move(defaults);
    if (edit) edit(script);
    return folder_.file("script.json", writeJson(script));
}

std::vector<std::string> CommandLine::signArguments() const {
    return {"--json", "sign", leaseId(), "--script", leaseScript().string()};
}

std::size_t CommandLine::envelopesOnDevice(const std::filesystem::path& home) const {
    const Run listed = runIn(home, {"--json", "envelopes", "list"});
    EXPECT_EQ(listed.status, 0) << listed.errors;
    const Value document = listed.json();
    const Array* envelopes = document.asArray();
    return envelopes ? envelopes->size() : 0;
}

} // namespace norvane
