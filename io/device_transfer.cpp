#include "io/device_transfer.h"

#include "core/host.h"
#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/printer_output.h"
#include "core/run_state.h"
#include "io/com_channel.h"
#include "io/file_table.h"
#include "io/open_channel.h"
#include "io/program_document.h"
#include "io/program_file.h"
#include "io/program_text.h"

namespace tessaly::io {

using core::ErrorId;

namespace {

// The lowest file number that is not open; 0 when all fifteen are.
int freeFileNumber(core::Interpreter& in)
{
    for (int n = 1; n <= kHighestFileNumber; ++n)
        if (!in.files().entry(n).isOpen())
            return n;
    return 0;
}

// Opens the transfer's channel on the lowest free number.
int beginTransfer(core::Interpreter& in, const std::string& name, DeviceTransfer::Kind kind, FileMode mode)
{
    int n = freeFileNumber(in);
    if (n == 0)
        return in.raise(ErrorId::OutOfMemory);
    TRY_BASIC(openChannel(in, n, mode, name));
    auto& transfer = in.files().transfer();
    transfer = DeviceTransfer {};
    transfer.kind = kind;
    transfer.fileNumber = n;
    return 0;
}

// The transfer is over: its channel is closed (as the CLOSE kept for it would) and it is forgotten.
void closeTransfer(core::Interpreter& in)
{
    auto& transfer = in.files().transfer();
    if (in.files().entry(transfer.fileNumber).isOpen())
        in.files().close(transfer.fileNumber);
    transfer = DeviceTransfer {};
}

int goOnLater(core::Interpreter& in)
{
    in.run().waitingForDevice = true;
    return core::kFailed;
}

// The next block of whole lines from sent on.
std::string_view nextBlock(const DeviceTransfer& transfer)
{
    std::string_view rest = std::string_view(transfer.listing).substr(transfer.sent);
    size_t length = 0;
    while (length < rest.size()) {
        size_t lineEnd = rest.find('\n', length);
        size_t next = lineEnd == std::string_view::npos ? rest.size() : lineEnd + 1;
        if (length > 0 && next > kTransferBlockBytes)
            break;
        length = next;
    }
    return rest.substr(0, length);
}

} // namespace

int saveThroughDevice(core::Interpreter& in, const std::string& name)
{
    auto& transfer = in.files().transfer();
    bool printer = name.find("COM") == std::string::npos;
    if (transfer.kind != DeviceTransfer::Kind::Save) {
        TRY_BASIC(beginTransfer(in, name, DeviceTransfer::Kind::Save, printer ? FileMode::Output : FileMode::Random));
        transfer.listing = ProgramText(in.program());
    }
    std::string_view block = nextBlock(transfer);
    if (!block.empty()) {
        const FileChannel& channel = in.files().entry(transfer.fileNumber);
        if (printer) {
            if (core::writeToPrinter(in, block) < 0) {
                closeTransfer(in);
                return core::kFailed;
            }
        } else if (sendToCom(in, channel, block) < 0) {
            // A full output queue waits; anything else ends the transfer with its error.
            if (in.error().isPending())
                closeTransfer(in);
            return core::kFailed;
        }
        transfer.sent += block.size();
    }
    if (transfer.sent < transfer.listing.size())
        return goOnLater(in);
    closeTransfer(in);
    return 0;
}

int loadThroughDevice(core::Interpreter& in, const std::string& name)
{
    auto& transfer = in.files().transfer();
    if (transfer.kind != DeviceTransfer::Kind::Load)
        TRY_BASIC(beginTransfer(in, name, DeviceTransfer::Kind::Load, FileMode::Random));
    // Whatever has arrived is gathered (a program file's worth and one byte more, which tells that
    // it will be cut); BREAK ends the load.
    size_t room = kMaxProgramFileBytes + 1 - std::min(transfer.received.size(), kMaxProgramFileBytes + 1);
    std::string arrived;
    const FileChannel& channel = in.files().entry(transfer.fileNumber);
    double waiting = 0;
    if (comCount(in, channel, ComCount::Waiting, waiting) < 0) {
        closeTransfer(in);
        return core::kFailed;
    }
    size_t count = std::min(room, static_cast<size_t>(waiting));
    if (count > 0 && bytesFromCom(in, channel, count, arrived) == 0)
        transfer.received += arrived;
    return goOnLater(in);
}

void endDeviceTransfer(core::Interpreter& in)
{
    auto& transfer = in.files().transfer();
    if (transfer.kind == DeviceTransfer::Kind::Load) {
        ProgramFromBytes(in, transfer.received);
        // The program came from a device, not from the document's file: it is not saved yet.
        in.host().setDocumentModified(true);
    }
    if (transfer.kind != DeviceTransfer::Kind::None)
        closeTransfer(in);
}

} // namespace tessaly::io
