// Each line on standard input is a command, answered by a line:
//   trusted    "trusted" or "not trusted"
//   front      "front WINDOW", the number 0 where there is none
//   paste WINDOW   "pasted" or "not pasted"; the number 0 for whichever window has the keyboard then
// Ends with the input.

#include "CommandReader.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Keystrokes.h"
#include "support/QtMainQueue.h"

#include <QCoreApplication>

#include <iostream>
#include <sstream>

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QtMainQueue mainQueue;
    X11Connection connection;
    X11Keystrokes keystrokes(connection, mainQueue);

    const CommandReader reader([&](const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        if (verb == "trusted") {
            std::cout << (keystrokes.isTrusted() ? "trusted" : "not trusted") << std::endl;
        } else if (verb == "front") {
            std::cout << "front " << keystrokes.frontWindow().value_or(PriorWindow{}).id << std::endl;
        } else if (verb == "paste") {
            PriorWindow prior;
            words >> prior.id;
            keystrokes.paste(prior.id ? std::optional(prior) : std::nullopt, [](bool pressed) {
                std::cout << (pressed ? "pasted" : "not pasted") << std::endl;
            });
        }
    });
    return QCoreApplication::exec();
}
