// What the statements do with a serial port: OPEN and CLOSE of a "COMn:" channel, sending and
// receiving, the counts of EOF, LOF and LOC, and the poll of ON COM. Nothing blocks: a send or a
// receive that cannot be completed yet takes nothing, sets RunState::waitingForDevice and returns
// kFailed without raising; the run loop runs the statement again at its next step.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

struct FileChannel;

// OPEN of an upper-cased name that contains "COM" as file number n. Returns 0 or kFailed.
int openComChannel(core::Interpreter& interpreter, int fileNumber, std::string_view name);
// CLOSE of a serial channel; refused ("Illegal operation in ") while a receive waits on it.
int closeComChannel(core::Interpreter& interpreter, int fileNumber);

// Sends text as a whole once the partner is ready and the output queue has room for it.
int sendToCom(core::Interpreter& interpreter, const FileChannel& channel, std::string_view text);

// A receive reads from the bytes waiting: it returns how many it used, or kNeedMore when they end
// before what it reads does. A full input queue counts as the end of what is read.
inline constexpr size_t kNeedMore = static_cast<size_t>(-1);
using ComReader = std::function<size_t(std::string_view waiting, bool queueFull)>;
// Runs reader over the waiting bytes and takes the bytes it used. While it needs more, waits; after
// the input wait without new data the user is asked "Input data none , Wait ?": Cancel raises
// "Disk I/O error in ".
int receiveFromCom(core::Interpreter& interpreter, const FileChannel& channel, const ComReader& reader);
// INPUT$(count, #n): waits, without a time limit, until count bytes are there.
int bytesFromCom(core::Interpreter& interpreter, const FileChannel& channel, size_t count, std::string& taken);

// INPUT # and LINE INPUT # of a serial channel, the variable list from pos to end: the items or
// the line are taken once all of them have arrived. LINE INPUT # passes over lines that hold
// nothing but a line end; quotes are not kept.
int inputFromCom(core::Interpreter& interpreter, const FileChannel& channel, int pos, int end);
int lineInputFromCom(core::Interpreter& interpreter, const FileChannel& channel, int pos, int end);

enum class ComCount { Waiting, FreeSpace };
// EOF: whether no byte is waiting; LOC: the bytes waiting; LOF: the free room of the input queue.
int comIsEmpty(core::Interpreter& interpreter, const FileChannel& channel, bool& empty);
int comCount(core::Interpreter& interpreter, const FileChannel& channel, ComCount count, double& value);

// The poll of the run loop's yield point while a COM trap is on: each open port whose trap is on
// and that has received bytes since its trap last fired has its trap marked due.
void pollComTraps(core::Interpreter& interpreter);
// Some COM trap is on: the host keeps polling while the program runs.
[[nodiscard]] bool comTrapsOn(core::Interpreter& interpreter);

} // namespace tessaly::io
