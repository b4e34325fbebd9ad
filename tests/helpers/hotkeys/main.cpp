// Each line on standard input is a command, answered by a line:
//   register CODE MODIFIERS   "registered" or "refused"
//   unregister                "unregistered", for the combination registered last
//   busy                      "busy"; the main thread then does nothing until there is more input
//   code SCANCODE             "code CODE" of that key, or "no code"
// and each press of a combination writes "pressed CODE". Ends with the input.

#include "CommandReader.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "support/QtMainQueue.h"

#include <QCoreApplication>

#include <iostream>
#include <poll.h>
#include <sstream>
#include <unistd.h>
#include <vector>

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QtMainQueue mainQueue;
    X11Connection connection;
    X11HotKeys hotKeys(connection, mainQueue, connection.isXWayland());
    std::vector<std::unique_ptr<GlobalHotKeys::Token>> tokens;

    const CommandReader reader([&](const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        if (verb == "register") {
            quint32 code = 0;
            quint32 modifiers = 0;
            words >> code >> modifiers;
            auto token = hotKeys.registerHotKey(code, modifiers,
                                                [code] { std::cout << "pressed " << code << std::endl; });
            std::cout << (token ? "registered" : "refused") << std::endl;
            if (token)
                tokens.push_back(std::move(token));
        } else if (verb == "unregister") {
            tokens.pop_back();
            std::cout << "unregistered" << std::endl;
        } else if (verb == "busy") {
            std::cout << "busy" << std::endl;
            pollfd input{STDIN_FILENO, POLLIN, 0};
            poll(&input, 1, -1);
        } else if (verb == "code") {
            quint32 scanCode = 0;
            words >> scanCode;
            if (const auto code = hotKeys.virtualKeyCode(scanCode))
                std::cout << "code " << *code << std::endl;
            else
                std::cout << "no code" << std::endl;
        }
    });
    return QCoreApplication::exec();
}
