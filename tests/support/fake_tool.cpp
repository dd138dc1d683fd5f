// Stands in for pagebinder and pagexport, by the name it is started under. What it does is written
// in the input file, one order a line:
//   info TEXT            a line of the information file; without one, none is written
//   page                 starts a page; the lines below belong to it
//   item LEFT TOP TEXT   a text item of the page
//   line TEXT            a line of the page file as it stands
//   keep-pages           the export writes nothing
//   fail RANGE           the merge of this range writes nothing and exits 1
//   wait FILE            waits until FILE exists before anything else
//   crash                ends by a signal
//   checked              refuses an input that is not the one the environment names
//   talk COUNT           writes COUNT kilobytes to standard output first
// Every start and end is recorded in "calls.txt" beside the program, the identity that each start
// is given in "identities.txt".
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

struct Orders
{
    std::string information;
    std::vector<std::string> pages;
    std::vector<std::string> failing;
    std::string waitFor;
    bool keepPages = false;
    bool crash = false;
    bool checked = false;
    int kilobytesToTalk = 0;
};

bool takeKey(const std::string &line, const std::string &key, std::string &rest)
{
    if (line.compare(0, key.size(), key) != 0) {
        return false;
    }
    rest = line.size() > key.size() ? line.substr(key.size() + 1) : std::string();
    return true;
}

std::string itemLine(const std::string &item)
{
    const std::size_t first = item.find(' ');
    const std::size_t second = item.find(' ', first + 1);
    return "<span style=\"left:" + item.substr(0, first) +
           ";top:" + item.substr(first + 1, second - first - 1) + ";width:90;height:12\">" +
           item.substr(second + 1) + "</span>\n";
}

Orders readOrders(const std::string &input)
{
    Orders orders;
    std::ifstream file(input);
    std::string line;
    std::string rest;
    while (std::getline(file, line)) {
        if (takeKey(line, "info", rest)) {
            orders.information += rest + "\n";
        } else if (takeKey(line, "page", rest)) {
            orders.pages.emplace_back("<html><body>\n");
        } else if (takeKey(line, "item", rest) && !orders.pages.empty()) {
            orders.pages.back() += itemLine(rest);
        } else if (takeKey(line, "line", rest) && !orders.pages.empty()) {
            orders.pages.back() += rest + "\n";
        } else if (takeKey(line, "keep-pages", rest)) {
            orders.keepPages = true;
        } else if (takeKey(line, "fail", rest)) {
            orders.failing.push_back(rest);
        } else if (takeKey(line, "wait", rest)) {
            orders.waitFor = rest;
        } else if (takeKey(line, "crash", rest)) {
            orders.crash = true;
        } else if (takeKey(line, "checked", rest)) {
            orders.checked = true;
        } else if (takeKey(line, "talk", rest)) {
            orders.kilobytesToTalk = std::atoi(rest.c_str());
        }
    }
    return orders;
}

void record(const fs::path &program, const std::string &event, const std::vector<std::string> &args)
{
    std::string line = event + " " + program.filename().string();
    for (const std::string &arg : args) {
        line += " [" + arg + "]";
    }
    std::ofstream(program.parent_path() / "calls.txt", std::ios::app) << line << "\n";
}

std::string givenIdentity()
{
    const char *identity = std::getenv("QUORLIN_INPUT_IDENTITY");
    return identity == nullptr ? std::string() : identity;
}

bool isGivenInput(const std::string &input)
{
    struct stat status = {};
    if (stat(input.c_str(), &status) != 0) {
        return false;
    }
    char text[200];
    std::snprintf(text, sizeof text, "%llu:%llu:%lld:%lld.%09ld",
                  static_cast<unsigned long long>(status.st_dev),
                  static_cast<unsigned long long>(status.st_ino),
                  static_cast<long long>(status.st_size),
                  static_cast<long long>(status.st_ctim.tv_sec), status.st_ctim.tv_nsec);
    return givenIdentity() == text;
}

bool refuses(const Orders &orders, const std::string &input)
{
    return orders.checked && !givenIdentity().empty() && !isGivenInput(input);
}

void prepare(const Orders &orders)
{
    while (!orders.waitFor.empty() && !fs::exists(orders.waitFor)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    const std::string kilobyte(1024, 'x');
    for (int i = 0; i < orders.kilobytesToTalk; ++i) {
        std::fputs(kilobyte.c_str(), stdout);
    }
    std::fflush(stdout);
    if (orders.crash) {
        std::signal(SIGTERM, SIG_DFL);
        std::raise(SIGTERM);
    }
}

int exportPages(const Orders &orders, const fs::path &output)
{
    if (orders.keepPages) {
        return 1;
    }
    const std::string stem = output.stem().string();
    for (std::size_t i = 0; i < orders.pages.size(); ++i) {
        char number[32];
        std::snprintf(number, sizeof number, "_pg_%04zu.htm", i + 1);
        std::ofstream(output.parent_path() / (stem + number)) << orders.pages[i];
    }
    std::ofstream(output) << "<document/>\n";
    return 0;
}

int writeInformation(const Orders &orders, const fs::path &output)
{
    if (orders.information.empty()) {
        return 1;
    }
    std::ofstream(output) << orders.information;
    return 0;
}

int merge(const Orders &orders, const std::vector<std::string> &args)
{
    std::string ranges;
    for (std::size_t i = 2; i + 2 < args.size(); ++i) {
        ranges += (ranges.empty() ? "" : " ") + args[i];
    }
    for (const std::string &failing : orders.failing) {
        if (failing == ranges) {
            return 1;
        }
    }
    std::ofstream file(args.back());
    file << ranges << "\n";
    return file ? 0 : 1;
}

int run(const fs::path &program, const std::vector<std::string> &args)
{
    if (args.size() < 3) {
        return 2;
    }
    if (program.filename() == "pagexport") {
        const Orders orders = readOrders(args[args.size() - 2]);
        prepare(orders);
        return refuses(orders, args[args.size() - 2]) ? 1 : exportPages(orders, args.back());
    }
    const Orders orders = readOrders(args[0]);
    prepare(orders);
    if (refuses(orders, args[0])) {
        return 1;
    }
    return args[1] == "-getinfo" ? writeInformation(orders, args.back()) : merge(orders, args);
}

} // namespace

int main(int argc, char *argv[])
{
    const fs::path program = argv[0];
    const std::vector<std::string> args(argv + 1, argv + argc);
    record(program, "start", args);
    std::ofstream(program.parent_path() / "identities.txt", std::ios::app)
        << program.filename().string() << " " << givenIdentity() << "\n";
    const int status = run(program, args);
    record(program, "end", args);
    return status;
}
