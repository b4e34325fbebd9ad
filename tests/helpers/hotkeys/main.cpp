// Each line on standard input is a command, answered by a line:
//   register CODE MODIFIERS   "registered" or "refused"
//   unregister                "unregistered", for the combination registered last
//   turn                      "turned", once the event loop has come round
// and each press of a combination writes "pressed CODE". Ends with the input.

#include "CommandReader.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "support/QtMainQueue.h"

#include <QCoreApplication>

#include <iostream>
#include <sstream>
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
        } else if (verb == "turn") {
            // Two turns, so that what arrived together with this line comes before the answer.
            mainQueue.async([&] { mainQueue.async([] { std::cout << "turned" << std::endl; }); });
        }
    });
    return QCoreApplication::exec();
}
