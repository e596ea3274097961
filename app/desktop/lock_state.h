// The keyboard's lock keys as the desktop reports them (X11); all off where it cannot tell.
#pragma once

namespace tessaly::desktop {

struct LockState {
    bool kana = false;
    bool caps = false;
    bool num = false;
    bool scroll = false;
};

LockState readLockState();

} // namespace tessaly::desktop
