#include "tests/tools/sandbox/sandbox_probe.h"

#include "tools/common/file_status.h"
#include "tools/sandbox/sealed_region.h"

#include <fcntl.h>
#include <linux/keyctl.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>

namespace probe {

namespace {

constexpr int creation = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;

char *sealedMemory(const Scene &scene)
{
    return const_cast<char *>(scene.hiddenName);
}

std::size_t pageSize()
{
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

long mapOver(const Scene &scene, int flags)
{
    void *memory = mmap(sealedMemory(scene), pageSize(), PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | flags, -1, 0);
    return memory == MAP_FAILED ? -1 : 0;
}

long moveOver(const Scene &scene)
{
    void *own =
        mmap(nullptr, pageSize(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    void *moved =
        mremap(own, pageSize(), pageSize(), MREMAP_MAYMOVE | MREMAP_FIXED, sealedMemory(scene));
    return moved == MAP_FAILED ? -1 : 0;
}

long connectToNetwork(const Scene & /*scene*/)
{
    const int channel = socket(AF_INET, SOCK_STREAM, 0);
    if (channel < 0) {
        return -1;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(9);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int result = connect(channel, reinterpret_cast<sockaddr *>(&address), sizeof(address));
    // Nobody listens there: to be turned down by the other side is to have got out.
    return result < 0 && errno == ECONNREFUSED ? 0 : result;
}

long runProgram(const Scene & /*scene*/)
{
    std::array<char *, 2> arguments = {const_cast<char *>("/bin/true"), nullptr};
    char *environment = nullptr;
    return execve("/bin/true", arguments.data(), &environment);
}

long readProcess(const Scene &scene)
{
    std::array<char, 8> buffer{};
    iovec local{buffer.data(), buffer.size()};
    iovec remote{sealedMemory(scene), buffer.size()};
    return process_vm_readv(scene.parent, &local, 1, &remote, 1, 0);
}

long makeFile(const Scene &scene, const char *name)
{
    return syscall(SYS_openat, scene.output, name, creation, 0600);
}

/// All that a tool does with its output. @returns 0 when every step was granted
long workAsTool(const Scene &scene)
{
    struct stat status
    {
    };
    const long file = makeFile(scene, scene.hiddenName);
    if (file < 0 || write(static_cast<int>(file), "text", 4) != 4 ||
        ftruncate(static_cast<int>(file), 2) != 0 || close(static_cast<int>(file)) != 0 ||
        tools::lookAtOpen(scene.input, status) != 0 ||
        tools::lookAt(scene.inputPath, status) != 0 ||
        renameat(scene.output, scene.hiddenName, scene.output, scene.outputName) != 0) {
        return -1;
    }
    return unlinkat(scene.output, scene.outputName, 0);
}

long useThreads(const Scene & /*scene*/)
{
    std::atomic<int> sum = 0;
    std::array<std::thread, 4> threads;
    for (std::thread &thread : threads) {
        thread = std::thread([&sum] { sum += static_cast<int>(std::string(100'000, 'x').size()); });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    return sum == 400'000 ? 0 : -1;
}

std::vector<Action> ordinaryWork()
{
    return {
        {"work as a tool does", workAsTool},
        {"use threads", useThreads},
        {"raise a signal of its own",
         [](const Scene &) {
             std::signal(SIGUSR1, SIG_IGN);
             return long{raise(SIGUSR1)};
         }},
        {"read the input",
         [](const Scene &scene) {
             char byte = 0;
             return long{pread(scene.input, &byte, 1, 0)};
         }},
        {"map the input",
         [](const Scene &scene) {
             void *memory = mmap(nullptr, 1, PROT_READ, MAP_PRIVATE, scene.input, 0);
             return memory == MAP_FAILED ? -1L : 0L;
         }},
    };
}

std::vector<Action> otherFiles()
{
    return {
        {"read another file",
         [](const Scene &s) { return long{open(s.path("secret.txt").c_str(), O_RDONLY)}; }},
        {"read another file by a path only",
         [](const Scene &s) { return long{open(s.path("secret.txt").c_str(), O_PATH)}; }},
        {"use a descriptor that was left open",
         [](const Scene &s) { return long{write(s.spare, "x", 1)}; }},
        {"read a file of the output folder",
         [](const Scene &s) { return syscall(SYS_openat, s.output, "other.pdf", O_RDONLY); }},
        {"list the output folder",
         [](const Scene &s) {
             std::array<char, 1000> entries{};
             return syscall(SYS_getdents64, s.output, entries.data(), entries.size());
         }},
        {"look at another file",
         [](const Scene &s) {
             struct stat status
             {
             };
             return syscall(SYS_newfstatat, AT_FDCWD, s.path("secret.txt").c_str(), &status, 0);
         }},
        {"open the input for writing",
         [](const Scene &s) { return long{open(s.inputPath, O_RDWR)}; }},
        {"write into the input", [](const Scene &s) { return long{pwrite(s.input, "x", 1, 0)}; }},
        {"write beside the output", [](const Scene &s) { return makeFile(s, "other"); }},
        {"make a file elsewhere",
         [](const Scene &s) { return long{open(s.path("new").c_str(), creation, 0600)}; }},
        {"make a file under a path in place of a name",
         [](const Scene &s) { return syscall(SYS_openat, s.output, s.inputPath, creation, 0600); }},
        {"make a file in the current folder",
         [](const Scene &s) {
             return syscall(SYS_openat, AT_FDCWD, s.outputName, creation, 0600);
         }},
        {"write over a file there is",
         [](const Scene &s) {
             return syscall(SYS_openat, s.output, s.outputName, O_WRONLY | O_TRUNC);
         }},
        {"follow a link when making a file",
         [](const Scene &s) {
             return syscall(SYS_openat, s.output, s.outputName, O_WRONLY | O_CREAT | O_EXCL, 0600);
         }},
    };
}

std::vector<Action> otherChanges()
{
    return {
        {"rename over another file",
         [](const Scene &s) {
             makeFile(s, s.hiddenName);
             return syscall(SYS_renameat, s.output, s.hiddenName, AT_FDCWD,
                            s.path("secret.txt").c_str());
         }},
        {"rename another file",
         [](const Scene &s) {
             return syscall(SYS_renameat, AT_FDCWD, s.path("secret.txt").c_str(), s.output,
                            s.outputName);
         }},
        {"remove another file",
         [](const Scene &s) {
             return syscall(SYS_unlinkat, AT_FDCWD, s.path("secret.txt").c_str(), 0);
         }},
        {"make a link",
         [](const Scene &s) {
             return long{link(s.path("secret.txt").c_str(), s.path("out/link").c_str())};
         }},
        {"make a symbolic link",
         [](const Scene &s) { return long{symlink("/etc", s.path("out/link").c_str())}; }},
        {"make a folder",
         [](const Scene &s) { return long{mkdir(s.path("out/folder").c_str(), 0700)}; }},
        {"make a pipe with a name",
         [](const Scene &s) { return long{mkfifo(s.path("out/pipe").c_str(), 0600)}; }},
        {"change permissions",
         [](const Scene &s) { return long{chmod(s.path("secret.txt").c_str(), 0777)}; }},
        {"change the permissions of an open file",
         [](const Scene &s) { return long{fchmod(s.input, 0777)}; }},
        {"cut another file short",
         [](const Scene &s) { return long{truncate(s.path("secret.txt").c_str(), 0)}; }},
        {"change folder", [](const Scene &s) { return long{chdir(s.folder.c_str())}; }},
    };
}

std::vector<Action> sealedNames()
{
    return {
        {"make sealed names writable",
         [](const Scene &s) {
             return long{mprotect(sealedMemory(s), pageSize(), PROT_READ | PROT_WRITE)};
         }},
        {"unmap sealed names",
         [](const Scene &s) { return long{munmap(sealedMemory(s), pageSize())}; }},
        {"unmap a stretch that holds sealed names",
         [](const Scene &s) {
             char *below = sealedMemory(s) - 16 * pageSize();
             return long{munmap(below, 32 * pageSize())};
         }},
        {"empty sealed names",
         [](const Scene &s) { return long{madvise(sealedMemory(s), pageSize(), MADV_DONTNEED)}; }},
        {"map over sealed names", [](const Scene &s) { return mapOver(s, MAP_FIXED); }},
        {"map beside sealed names",
         [](const Scene &s) {
             void *place = sealedMemory(s) + 256 * pageSize();
             return mmap(place, pageSize(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                         0) == place
                        ? 0L
                        : (errno = EPERM, -1L);
         }},
        {"move memory over sealed names", moveOver},
    };
}

std::vector<Action> otherProcesses()
{
    return {
        {"run a program", runProgram},
        {"start a process", [](const Scene &) { return syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0); }},
        {"start a process that shares memory",
         [](const Scene &) {
             return syscall(SYS_clone, CLONE_VM | CLONE_VFORK | SIGCHLD, 0, 0, 0, 0);
         }},
        {"start a thread in a namespace of its own",
         [](const Scene &) {
             return syscall(SYS_clone,
                            CLONE_VM | CLONE_FS | CLONE_FILES | CLONE_SIGHAND | CLONE_THREAD |
                                CLONE_SYSVSEM | CLONE_NEWUSER,
                            0, 0, 0, 0);
         }},
        {"read another process", readProcess},
        {"trace another process",
         [](const Scene &s) { return ptrace(PTRACE_SEIZE, s.parent, 0, 0); }},
        {"open the memory of another process",
         [](const Scene &s) {
             const std::string path = "/proc/" + std::to_string(s.parent) + "/mem";
             return long{open(path.c_str(), O_RDONLY)};
         }},
        {"hold another process",
         [](const Scene &s) { return syscall(SYS_pidfd_open, s.parent, 0); }},
        {"signal another process", [](const Scene &s) { return long{kill(s.parent, 0)}; }},
        {"signal a thread of another process",
         [](const Scene &s) { return syscall(SYS_tgkill, s.parent, s.parent, 0); }},
        {"limit another process",
         [](const Scene &s) { return long{prlimit(s.parent, RLIMIT_CORE, nullptr, nullptr)}; }},
        {"read what is typed",
         [](const Scene &) {
             char byte = 0;
             return long{read(0, &byte, 1)};
         }},
        {"type into the terminal", [](const Scene &) { return long{ioctl(0, TIOCSTI, "x")}; }},
    };
}

std::vector<Action> network()
{
    return {
        {"connect", connectToNetwork},
        {"open a local socket",
         [](const Scene &) { return long{socket(AF_UNIX, SOCK_STREAM, 0)}; }},
        {"open a pair of sockets",
         [](const Scene &) {
             std::array<int, 2> pair{};
             return long{socketpair(AF_UNIX, SOCK_STREAM, 0, pair.data())};
         }},
    };
}

std::vector<Action> kernel()
{
    return {
        {"run new code",
         [](const Scene &) {
             return mmap(nullptr, pageSize(), PROT_READ | PROT_WRITE | PROT_EXEC,
                         MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) == MAP_FAILED
                        ? -1L
                        : 0L;
         }},
        {"turn data into code",
         [](const Scene &) {
             void *memory = mmap(nullptr, pageSize(), PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
             return long{mprotect(memory, pageSize(), PROT_READ | PROT_EXEC)};
         }},
        {"lift a limit",
         [](const Scene &) {
             const rlimit limit{0, 0};
             return long{setrlimit(RLIMIT_CORE, &limit)};
         }},
        {"mount",
         [](const Scene &s) { return long{mount("x", s.folder.c_str(), "tmpfs", 0, "")}; }},
        {"leave the namespace", [](const Scene &) { return long{unshare(CLONE_NEWUSER)}; }},
        {"read a key",
         [](const Scene &) { return syscall(SYS_keyctl, KEYCTL_GET_KEYRING_ID, -3, 0); }},
        {"load a kernel program", [](const Scene &) { return syscall(SYS_bpf, 0, nullptr, 0); }},
        {"queue calls past the filter",
         [](const Scene &) { return syscall(SYS_io_uring_setup, 1, nullptr); }},
        {"handle page faults", [](const Scene &) { return syscall(SYS_userfaultfd, 0); }},
        {"count events", [](const Scene &) { return syscall(SYS_perf_event_open, 0, 0, 0, 0, 0); }},
        {"make a file without a name",
         [](const Scene &) { return syscall(SYS_memfd_create, "x", 0); }},
        {"change the filter",
         [](const Scene &) { return long{prctl(PR_SET_SECCOMP, 1, 0, 0, 0)}; }},
    };
}

} // namespace

const std::vector<Action> &fatalActions()
{
    static const std::vector<Action> all = {
        {"write into sealed names",
         [](const Scene &s) {
             *static_cast<volatile char *>(sealedMemory(s)) = 'x';
             return 0L;
         }},
#if defined(__x86_64__)
        {"call as another architecture",
         [](const Scene &) {
             long result = 20; // the number of getpid() there
             asm volatile("int $0x80" : "+a"(result) : : "memory", "r8", "r9", "r10", "r11");
             return result;
         }},
        {"call by the other numbers of this architecture",
         [](const Scene &) { return syscall(0x4000'0000 | SYS_getpid); }},
#endif
    };
    return all;
}

const std::vector<Action> &actions()
{
    static const std::vector<Action> all = [] {
        std::vector<Action> list;
        for (const auto &group : {ordinaryWork(), otherFiles(), otherChanges(), sealedNames(),
                                  otherProcesses(), network(), kernel()}) {
            list.insert(list.end(), group.begin(), group.end());
        }
        return list;
    }();
    return all;
}

} // namespace probe
