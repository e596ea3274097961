// The device name of a serial OPEN: port number, the five fields and their errors.
#include <gtest/gtest.h>

#include "io/com_settings.h"

namespace tessaly::io {
namespace {

using core::ErrorId;

struct Accepted {
    const char* name;
    int port;
    const char* line;
    Handshaking handshaking;
};

TEST(ComSettings, AcceptedNamesGiveThePortTheLineAndTheFlow)
{
    const Accepted cases[] = {
        {"COM1:9600,N,8,1,N", 1, "9600,N,8,1", Handshaking::RequestToSend},
        {"COM:1200,E,7,1,X", 1, "1200,E,7,1", Handshaking::RequestToSendXonXoff},
        {"COM0:300,O,7,2,N", 1, "300,O,7,2", Handshaking::RequestToSend},
        {"COM3: 110 , E , 7 , 1.5 , X ", 3, "110,E,7,1.5", Handshaking::RequestToSendXonXoff},
        {"COM12:256000,N,8,2,N", 12, "256000,N,8,2", Handshaking::RequestToSend},
        {"COM2:9600X,N,8,1,N", 2, "9600,N,8,1", Handshaking::RequestToSend}, // the speed's leading digits
    };
    for (const auto& c : cases) {
        ComSettings settings;
        EXPECT_FALSE(parseComName(c.name, settings).has_value()) << c.name;
        EXPECT_EQ(settings.port, c.port) << c.name;
        EXPECT_EQ(settings.lineText(), c.line) << c.name;
        EXPECT_EQ(settings.handshaking, c.handshaking) << c.name;
    }
}

TEST(ComSettings, RefusedNamesGiveTheirError)
{
    const std::pair<const char*, ErrorId> cases[] = {
        {"COM-1:9600,N,8,1,N", ErrorId::IllegalFunctionCall},
        {"COM2:9600,N,7,1,N", ErrorId::SyntaxError}, // seven data bits need E or O
        {"COM1:9600,E,8,1,N", ErrorId::SyntaxError}, // eight need N
        {"COM1:100,N,8,1,N", ErrorId::SyntaxError},
        {"COM1:256001,N,8,1,N", ErrorId::SyntaxError},
        {"COM1:,N,8,1,N", ErrorId::SyntaxError},
        {"COM1:9600,M,8,1,N", ErrorId::SyntaxError},
        {"COM1:9600,N,8,3,N", ErrorId::SyntaxError},
        {"COM1:9600,N,8,1,R", ErrorId::SyntaxError},
        {"COM1:9600,N,8,1", ErrorId::SyntaxError},   // no flow field
        {"COM1:9600,N,8,1,", ErrorId::SyntaxError},  // an empty one
        {"COM1:9600,N,8,1,N,N", ErrorId::SyntaxError},
        {"COM1", ErrorId::SyntaxError},
    };
    for (const auto& [name, error] : cases) {
        ComSettings settings;
        EXPECT_EQ(parseComName(name, settings), error) << name;
    }
}

} // namespace
} // namespace tessaly::io
