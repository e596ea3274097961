#include "io/com_channel.h"

#include "core/event_traps.h"
#include "core/host.h"
#include "core/interpreter.h"
#include "core/outcome.h"
#include "core/run_state.h"
#include "io/com_settings.h"
#include "io/file_table.h"

namespace tessaly::io {

using core::ErrorId;

namespace {

constexpr std::string_view kPartnerQuestion = "Partner is not connect , Retry ?";
constexpr std::string_view kNoDataQuestion = "Input data none , Wait ?";

ComSlot* slotOf(core::Interpreter& in, const FileChannel& channel)
{
    if (channel.comSlot < 1 || channel.comSlot > kComSlots)
        return nullptr;
    return &in.files().comPorts().slot(channel.comSlot);
}

// The slot's device, brought up to date; nullptr (after raising) when the port is no longer open,
// as after its device went away.
SerialDevice* openDevice(core::Interpreter& in, const FileChannel& channel)
{
    ComSlot* slot = slotOf(in, channel);
    if (slot == nullptr || !slot->device || !slot->device->isOpen()) {
        in.raise(ErrorId::FileNotOpenSerial);
        return nullptr;
    }
    slot->device->pump();
    if (!slot->device->isOpen()) {
        in.raise(ErrorId::FileNotOpenSerial);
        return nullptr;
    }
    return slot->device.get();
}

int waitForDevice(core::Interpreter& in)
{
    in.run().waitingForDevice = true;
    return core::kFailed;
}

} // namespace

int openComChannel(core::Interpreter& in, int fileNumber, std::string_view name)
{
    auto& ports = in.files().comPorts();
    ComSettings settings;
    // The port number is read before the fields: a port already open is reported before a bad field.
    auto error = parseComName(name, settings);
    if (error == ErrorId::IllegalFunctionCall)
        return in.raise(*error);
    if (ports.slotOfPort(settings.port) != 0)
        return in.raise(ErrorId::PortAlreadyOpen);
    if (error)
        return in.raise(*error);
    int k = ports.freeSlot();
    if (k == 0)
        return in.raise(ErrorId::OutOfMemory);
    auto device = SerialDevice::open(ports.devicePath(settings.port), settings);
    if (!device)
        return in.raise(ErrorId::FileCannotOpen);
    while (!device->partnerReady()) {
        if (in.host().messageBox(kPartnerQuestion, core::MessageButtons::RetryCancel) != core::MessageAnswer::Retry)
            return in.raise(ErrorId::NotConnectedCom);
    }
    FileTable& files = in.files();
    ComSlot& slot = ports.slot(k);
    slot = ComSlot {};
    slot.fileNumber = fileNumber;
    slot.port = settings.port;
    slot.device = std::move(device);
    FileChannel& channel = files.entry(fileNumber);
    channel = FileChannel {};
    channel.handle = 1;
    channel.mode = FileMode::Com;
    channel.device = DeviceKind::Serial;
    channel.comSlot = k;
    return 0;
}

int closeComChannel(core::Interpreter& in, int fileNumber)
{
    FileChannel& channel = in.files().entry(fileNumber);
    ComSlot* slot = slotOf(in, channel);
    if (slot != nullptr && slot->receiving)
        return in.raise(ErrorId::IllegalOperation);
    in.files().close(fileNumber);
    return 0;
}

int sendToCom(core::Interpreter& in, const FileChannel& channel, std::string_view text)
{
    SerialDevice* device = openDevice(in, channel);
    if (device == nullptr)
        return core::kFailed;
    if (!device->partnerReady())
        return waitForDevice(in);
    if (text.size() > kComQueueSize)
        return in.raise(ErrorId::DiskIoError);
    if (device->queuedOutput() + text.size() >= kComQueueSize)
        return waitForDevice(in);
    device->send(text);
    if (!device->isOpen())
        return in.raise(ErrorId::FileNotOpenSerial);
    return 0;
}

int receiveFromCom(core::Interpreter& in, const FileChannel& channel, const ComReader& reader)
{
    SerialDevice* device = openDevice(in, channel);
    if (device == nullptr)
        return core::kFailed;
    ComSlot& slot = *slotOf(in, channel);
    std::string_view waiting = device->received();
    size_t used = reader(waiting, waiting.size() >= kComQueueSize);
    if (used != kNeedMore) {
        device->take(used);
        slot.receiving = false;
        return 0;
    }
    auto now = std::chrono::steady_clock::now();
    // The wait starts when the receive first waits, and again whenever new bytes arrive.
    if (!slot.receiving || device->receivedTotal() != slot.waitReceived) {
        slot.receiving = true;
        slot.waitSince = now;
        slot.waitReceived = device->receivedTotal();
    } else if (now - slot.waitSince >= in.files().comPorts().inputWait) {
        if (in.host().messageBox(kNoDataQuestion, core::MessageButtons::RetryCancel) != core::MessageAnswer::Retry) {
            slot.receiving = false;
            return in.raise(ErrorId::DiskIoError);
        }
        slot.waitSince = std::chrono::steady_clock::now();
    }
    return waitForDevice(in);
}

int bytesFromCom(core::Interpreter& in, const FileChannel& channel, size_t count, std::string& taken)
{
    SerialDevice* device = openDevice(in, channel);
    if (device == nullptr)
        return core::kFailed;
    if (device->received().size() < count)
        return waitForDevice(in);
    taken.assign(device->received().substr(0, count));
    device->take(count);
    return 0;
}

int comIsEmpty(core::Interpreter& in, const FileChannel& channel, bool& empty)
{
    SerialDevice* device = openDevice(in, channel);
    if (device == nullptr)
        return core::kFailed;
    empty = device->received().empty();
    return 0;
}

int comCount(core::Interpreter& in, const FileChannel& channel, ComCount count, double& value)
{
    SerialDevice* device = openDevice(in, channel);
    if (device == nullptr)
        return core::kFailed;
    size_t waiting = device->received().size();
    value = static_cast<double>(count == ComCount::Waiting ? waiting : kComQueueSize - waiting);
    return 0;
}

bool comTrapsOn(core::Interpreter& in)
{
    static_assert(core::trap::kComSlotCount == kComSlots);
    return in.eventTraps().anyComTrapOn();
}

// Which port's data counts: each port fires its own trap, once for the bytes that have arrived
// since it last fired, so that a handler that reads only part of them is not called again at once.
void pollComTraps(core::Interpreter& in)
{
    auto& ports = in.files().comPorts();
    for (int k = 1; k <= kComSlots; ++k) {
        ComSlot& slot = ports.slot(k);
        int trapSlot = core::trap::kFirstCom + k - 1;
        if (!slot.isOccupied() || !slot.device
            || in.eventTraps().sources[static_cast<size_t>(trapSlot)].mode != core::TrapMode::On)
            continue;
        slot.device->pump();
        if (slot.device->receivedTotal() == slot.announced || slot.device->received().empty())
            continue;
        slot.announced = slot.device->receivedTotal();
        core::reportEvent(in, trapSlot);
    }
}

} // namespace tessaly::io
