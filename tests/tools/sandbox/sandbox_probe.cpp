// Behaves as a tool that a file has taken over: enters the sandbox as the tools do and then tries
// one thing that a tool never does. sandbox_probe PARTS FOLDER ACTION
//
// FOLDER holds "in.pdf", "secret.txt" and the empty folder "out". PARTS is "all", "filter",
// "landlock", or "container" for a system whose own filter refuses to grant either. The answer is
// one line: "allowed", or the name of the error. "list" in place of ACTION names all actions.

#include "tests/tools/sandbox/sandbox_probe.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

using probe::Scene;

/// What some containers do: both calls fail, each in its own way.
void refuseSandboxCalls()
{
    std::array<sock_filter, 6> code = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_seccomp, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_landlock_create_ruleset, 2, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
    }};
    const sock_fprog program{code.size(), code.data()};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

tools::SandboxState enter(const std::string &parts, const tools::SandboxNeeds &needs)
{
    if (parts == "container") {
        refuseSandboxCalls();
    }
    const auto chosen = parts == "filter"     ? tools::SandboxParts::filterOnly
                        : parts == "landlock" ? tools::SandboxParts::landlockOnly
                                              : tools::SandboxParts::all;
    return tools::enterSandbox(needs, chosen);
}

int tryAction(const std::string &parts, const std::string &folder, const probe::Action &action)
{
    tools::SealedText text(100, 5000);
    Scene scene;
    scene.folder = folder;
    scene.parent = getppid();
    scene.hiddenName = text.addName(".hidden.part");
    scene.outputName = text.addName("output.pdf");
    scene.inputPath = text.addPath(folder + "/in.pdf");
    text.seal();
    scene.input = open(scene.inputPath, O_RDONLY | O_CLOEXEC);
    scene.output = open((folder + "/out").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int spare = open((folder + "/secret.txt").c_str(), O_RDWR);
    scene.spare = spare;
    const tools::SandboxState state =
        enter(parts, {{scene.input, scene.output}, {scene.output}, text.isInPlace(), true});
    if (parts != "container" &&
        (!state.privileges.empty() || (parts != "landlock" && !state.filter.empty()))) {
        std::printf("no sandbox: %s\n", tools::describeSandbox(state).c_str());
        return 1;
    }
    const long result = action.attempt(scene);
    std::printf("%s\n", result >= 0 ? "allowed" : strerrorname_np(errno));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        return 2;
    }
    const std::string wanted = argv[3];
    const std::vector<probe::Action> &all = probe::actions();
    if (wanted == "list") {
        for (const probe::Action &action : all) {
            std::printf("%s\n", action.name);
        }
        return 0;
    }
    for (const auto *list : {&all, &probe::fatalActions()}) {
        for (const probe::Action &action : *list) {
            if (wanted == action.name) {
                return tryAction(argv[1], argv[2], action);
            }
        }
    }
    return 2;
}
