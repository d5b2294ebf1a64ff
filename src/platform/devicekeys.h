#pragma once

// The device's own keys, in Qt's key space beyond its named keys.
enum DeviceKey {
    Key_Headset = 0x01200008,
    Key_Video0 = 0x01200010,
    Key_Video1 = 0x01200011,
    Key_Video2 = 0x01200012,
    Key_Video3 = 0x01200013,
    Key_Video4 = 0x01200014
};
