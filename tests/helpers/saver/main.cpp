// Saves one file while its system calls are disturbed as told, or until it is killed:
//
//     quillbar_saver PATH LETTER SIZE [OPTION...]
//     quillbar_saver PATH loop
//     quillbar_saver PATH defaults
//
// where an OPTION is kill-at N, tear-at N, fail CALL NUMBER ERRNO, short BYTES or interrupt.
//
// The first form writes SIZE times LETTER by AtomicFile, prints the calls that were made, and ends with 0, or
// with 1 when the save reported a failure. The second prints a line and then saves without end, LETTER and
// SIZE going together as the test knows. The third sets preferences without end: "count" goes up by one, from
// what is stored, and is printed once it is set, and before the first set too; "padding" varies in size.
#include "SystemCalls.h"

#include "support/AtomicFile.h"
#include "support/UserDefaults.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {
[[noreturn]] char* usage()
{
    std::fputs("quillbar_saver: wrong arguments\n", stderr);
    std::exit(2);
}

int loop(const QString& path)
{
    std::puts("saving");
    std::fflush(stdout);
    for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1)) {
        if (!AtomicFile::write(path, QByteArray(40'000 + 3'001 * (letter - 'a'), letter)))
            return 1;
    }
}

[[noreturn]] void setDefaults(const QString& path)
{
    UserDefaults defaults(path);
    qint64 count = defaults.get<qint64>(QStringLiteral("count")).value_or(0);
    while (true) {
        std::printf("%lld\n", static_cast<long long>(count));
        std::fflush(stdout);
        if (count % 4 == 0)
            defaults.set(QStringLiteral("padding"), QStringList(count % 1000, QStringLiteral("padding")));
        defaults.set(QStringLiteral("count"), ++count);
    }
}

void readOptions(SystemCalls& calls, int count, char** options)
{
    for (int at = 0; at < count;) {
        const auto next = [&] { return at < count ? options[at++] : usage(); };
        const char* const option = next();
        if (std::strcmp(option, "kill-at") == 0) {
            calls.killAt = std::atoi(next());
        } else if (std::strcmp(option, "tear-at") == 0) {
            calls.killAt = std::atoi(next());
            calls.tearsWrite = true;
        } else if (std::strcmp(option, "fail") == 0) {
            const std::string name = next();
            const int number = std::atoi(next());
            calls.failures[{name, number}] = std::atoi(next());
        } else if (std::strcmp(option, "short") == 0) {
            calls.writeAtMost = static_cast<std::size_t>(std::atoi(next()));
        } else if (std::strcmp(option, "interrupt") == 0) {
            calls.interrupts = true;
        } else {
            usage();
        }
    }
}
} // namespace

int main(int argc, char* argv[])
{
    if (argc < 3)
        usage();
    const QString path = QString::fromLocal8Bit(argv[1]);
    if (std::strcmp(argv[2], "loop") == 0)
        return loop(path);
    if (std::strcmp(argv[2], "defaults") == 0)
        setDefaults(path);
    if (argc < 4)
        usage();
    auto& calls = SystemCalls::instance();
    readOptions(calls, argc - 4, argv + 4);
    const QByteArray bytes(std::atoi(argv[3]), argv[2][0]);
    calls.isArmed = true;
    const bool saved = AtomicFile::write(path, bytes);
    calls.isArmed = false;
    for (const auto& line : calls.trace)
        std::puts(line.c_str());
    return saved ? 0 : 1;
}
