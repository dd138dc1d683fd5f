// Compiles the system call filters of both tools when they are built: make_filter OUTPUT.inc
//
// There is one for each kind of work, because the kernel takes time for every instruction when a
// tool starts: with threads or without, with new files or without.
//
// Everything that is not listed here is refused with "Operation not permitted", which the code that
// made the call sees as an ordinary failure.

#include "tools/sandbox/sealed_region.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using tools::sealedNames;
using tools::sealedPaths;
using tools::sealedTextEnd;
using tools::sealedTextMask;

constexpr std::uint32_t firstArgument = 16; // where it stands in the kernel's account of a call
constexpr scmp_datum_t firstOwnDescriptor = 3;

void check(int result, const char *what)
{
    if (result != 0) {
        std::fprintf(stderr, "make_filter: %s: error %d\n", what, -result);
        std::exit(1);
    }
}

/// A filter in the making; refuses whatever is not allowed.
class Filter
{
public:
    Filter() : m_context(seccomp_init(SCMP_ACT_ERRNO(EPERM)))
    {
        check(m_context == nullptr ? -ENOMEM : 0, "begin");
        // Nothing may come in by the calls of another architecture.
        check(seccomp_attr_set(m_context, SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS),
              "architecture");
    }
    ~Filter() { seccomp_release(m_context); }
    Filter(const Filter &) = delete;
    Filter &operator=(const Filter &) = delete;

    void allow(int call, std::vector<scmp_arg_cmp> conditions = {})
    {
        add(SCMP_ACT_ALLOW, call, std::move(conditions));
    }
    void answer(int call, int error)
    {
        add(SCMP_ACT_ERRNO(static_cast<unsigned>(error)), call, {});
    }
    std::vector<sock_filter> compile() const;

private:
    void add(std::uint32_t action, int call, std::vector<scmp_arg_cmp> conditions)
    {
        check(seccomp_rule_add_array(m_context, action, call,
                                     static_cast<unsigned>(conditions.size()), conditions.data()),
              "rule");
    }

    scmp_filter_ctx m_context;
};

std::vector<sock_filter> Filter::compile() const
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::tmpfile(), std::fclose);
    check(file ? 0 : -errno, "temporary file");
    check(seccomp_export_bpf(m_context, fileno(file.get())), "export");
    std::rewind(file.get());
    std::vector<sock_filter> program;
    sock_filter instruction{};
    while (std::fread(&instruction, sizeof(instruction), 1, file.get()) == 1) {
        program.push_back(instruction);
    }
    return program;
}

constexpr int loadWord = BPF_LD | BPF_W | BPF_ABS;
constexpr int jumpIfEqual = BPF_JMP | BPF_JEQ | BPF_K;
constexpr int jumpIfGreater = BPF_JMP | BPF_JGT | BPF_K;
constexpr int jumpIfAtLeast = BPF_JMP | BPF_JGE | BPF_K;

/// How many instructions at @p at test what is always true: no bit of an argument's half, or that a
/// half is at least zero.
std::size_t lengthOfVoidTest(const std::vector<sock_filter> &program, std::size_t at)
{
    const auto is = [&program, at](std::size_t offset, int code, bool isZero) {
        return at + offset < program.size() && program[at + offset].code == code &&
               (!isZero || program[at + offset].k == 0);
    };
    if (!is(0, loadWord, false)) {
        return 0;
    }
    if (is(1, BPF_ALU | BPF_AND | BPF_K, true) && is(2, jumpIfEqual, true) &&
        program[at + 2].jt == 0) {
        return 3;
    }
    return is(1, jumpIfAtLeast, true) && program[at + 1].jt == 0 ? 2 : 0;
}

/// Leaves out tests that are always true.
std::vector<sock_filter> withoutVoidTests(const std::vector<sock_filter> &program)
{
    std::vector<std::size_t> places(program.size() + 1);
    std::vector<std::size_t> kept;
    for (std::size_t at = 0, skipped = 0; at < program.size(); ++at) {
        places[at] = kept.size();
        skipped = skipped == 0 ? lengthOfVoidTest(program, at) : skipped;
        if (skipped == 0) {
            kept.push_back(at);
        } else {
            --skipped;
        }
    }
    std::vector<sock_filter> result;
    for (const std::size_t at : kept) {
        sock_filter instruction = program[at];
        if (BPF_CLASS(instruction.code) == BPF_JMP) {
            const auto moved = [&places, at](unsigned char distance) {
                return static_cast<unsigned char>(places[at + 1 + distance] - places[at] - 1);
            };
            check(BPF_OP(instruction.code) == BPF_JA ? -EINVAL : 0, "long jump");
            instruction.jt = moved(instruction.jt);
            instruction.jf = moved(instruction.jf);
        }
        result.push_back(instruction);
    }
    return result;
}

// The kernel takes descriptors and flags of 32 bits. To say so spares the test of the other half.
scmp_arg_cmp bits(unsigned argument, std::uint32_t mask, std::uint32_t value)
{
    return SCMP_CMP(argument, SCMP_CMP_MASKED_EQ, mask, value);
}

scmp_arg_cmp equals(unsigned argument, std::uint32_t value)
{
    return bits(argument, ~std::uint32_t{0}, value);
}

/// An open descriptor and not AT_FDCWD, which is negative.
scmp_arg_cmp folder(unsigned argument)
{
    return bits(argument, 0x8000'0000, 0);
}

scmp_arg_cmp within(unsigned argument, std::uint64_t sealedText)
{
    return SCMP_CMP(argument, SCMP_CMP_MASKED_EQ, sealedTextMask, sealedText);
}

scmp_arg_cmp behindSealedText(unsigned argument)
{
    return SCMP_CMP(argument, SCMP_CMP_GE, sealedTextEnd);
}

void allowFiles(Filter &filter)
{
    // The standard descriptors may be a terminal, and what its user types is nobody's business.
    filter.allow(SCMP_SYS(read), {SCMP_A0(SCMP_CMP_GE, firstOwnDescriptor)});
    for (const int call : {SCMP_SYS(write), SCMP_SYS(pread64), SCMP_SYS(lseek), SCMP_SYS(fstat),
                           SCMP_SYS(close), SCMP_SYS(poll), SCMP_SYS(ppoll)}) {
        filter.allow(call);
    }
    filter.allow(SCMP_SYS(fcntl), {equals(1, F_DUPFD_CLOEXEC)});
    filter.allow(SCMP_SYS(newfstatat), {within(1, sealedPaths)});
}

void allowNewFiles(Filter &filter)
{
    filter.allow(SCMP_SYS(ftruncate));
    filter.allow(SCMP_SYS(flock));
    constexpr std::uint32_t creation = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW;
    constexpr std::uint32_t either = O_CLOEXEC;
    filter.allow(SCMP_SYS(openat), {folder(0), within(1, sealedNames), bits(2, ~either, creation)});
    filter.allow(SCMP_SYS(unlinkat), {folder(0), within(1, sealedNames), equals(2, 0)});
    filter.allow(SCMP_SYS(renameat),
                 {folder(0), within(1, sealedNames), folder(2), within(3, sealedNames)});
}

void allowMemory(Filter &filter)
{
    filter.allow(SCMP_SYS(brk));
    // No new code, and nothing is laid over the sealed text.
    filter.allow(SCMP_SYS(mmap),
                 {SCMP_A0(SCMP_CMP_EQ, 0), bits(2, PROT_EXEC, 0), bits(3, MAP_FIXED, 0)});
    filter.allow(SCMP_SYS(munmap), {behindSealedText(0)});
    filter.allow(SCMP_SYS(madvise), {behindSealedText(0)});
    filter.allow(SCMP_SYS(mprotect), {behindSealedText(0), bits(2, PROT_EXEC, 0)});
    constexpr std::uint32_t mayMove = MREMAP_MAYMOVE;
    filter.allow(SCMP_SYS(mremap), {behindSealedText(0), bits(3, ~mayMove, 0)});
}

void allowThreads(Filter &filter)
{
    // The newer call hides its flags from filters; the C library then takes the older one.
    filter.answer(SCMP_SYS(clone3), ENOSYS);
    constexpr std::uint32_t sameProcess =
        CLONE_VM | CLONE_FS | CLONE_FILES | CLONE_SIGHAND | CLONE_THREAD | CLONE_SYSVSEM;
    constexpr std::uint32_t bookkeeping = CLONE_SETTLS | CLONE_PARENT_SETTID | CLONE_CHILD_SETTID |
                                          CLONE_CHILD_CLEARTID | CLONE_DETACHED;
    filter.allow(SCMP_SYS(clone), {bits(0, ~bookkeeping, sameProcess)});
    for (const int call :
         {SCMP_SYS(set_robust_list), SCMP_SYS(rseq), SCMP_SYS(sched_getaffinity), SCMP_SYS(exit)}) {
        filter.allow(call);
    }
}

void allowProcess(Filter &filter)
{
    for (const int call :
         {SCMP_SYS(exit_group), SCMP_SYS(futex), SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask),
          SCMP_SYS(rt_sigreturn), SCMP_SYS(sigaltstack), SCMP_SYS(restart_syscall),
          SCMP_SYS(getpid), SCMP_SYS(gettid), SCMP_SYS(getrandom), SCMP_SYS(clock_gettime)}) {
        filter.allow(call);
    }
    filter.allow(SCMP_SYS(tgkill), {equals(0, tools::ownProcessPlaceholder)});
}

void writeFilter(std::FILE *output, const char *name, bool hasNewFiles, bool hasThreads)
{
    Filter filter;
    allowFiles(filter);
    allowMemory(filter);
    allowProcess(filter);
    if (hasNewFiles) {
        allowNewFiles(filter);
    }
    if (hasThreads) {
        allowThreads(filter);
    }
    std::vector<sock_filter> program = withoutVoidTests(filter.compile());
    // To look at an argument first makes the kernel skip its forecast of the answer to every single
    // system call there is, which would take longer than all the calls that a tool makes.
    program.insert(program.begin(), BPF_STMT(loadWord, firstArgument));
    std::fprintf(output, "constexpr std::array<sock_filter, %zu> %s = {{\n", program.size(), name);
    for (const sock_filter &instruction : program) {
        std::fprintf(output, "    {0x%02x, %u, %u, 0x%08x},\n", instruction.code, instruction.jt,
                     instruction.jf, instruction.k);
    }
    std::fputs("}};\n", output);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: make_filter OUTPUT.inc\n", stderr);
        return 2;
    }
    std::FILE *output = std::fopen(argv[1], "w");
    check(output == nullptr ? -errno : 0, argv[1]);
    writeFilter(output, "reading", false, false);
    writeFilter(output, "readingInThreads", false, true);
    writeFilter(output, "writing", true, false);
    writeFilter(output, "writingInThreads", true, true);
    return std::fclose(output) == 0 ? 0 : 1;
}
