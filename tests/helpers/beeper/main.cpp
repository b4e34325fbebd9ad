// For each line on standard input: sounds the alert and, once the call has returned, answers with a line.
// Ends with the input.

#include "platform/linux/sound/CanberraAlertSound.h"

#include <iostream>
#include <string>

int main()
{
    CanberraAlertSound alertSound;
    for (std::string line; std::getline(std::cin, line);) {
        alertSound.beep();
        std::cout << "returned" << std::endl;
    }
}
