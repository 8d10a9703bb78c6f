#pragma once

/// The kinds of device.
enum DeviceKind {
    kDeviceNone = 0,       ///< no device; as a request: ask the user
    kDeviceDisplay = 1,    ///< an X11 window of our own
    kDeviceMetafile = 3,   ///< text metafile or binary CGM
    kDevicePostScript = 4, ///< PostScript file or pipe
    kDeviceHpgl = 5,       ///< HPGL or PCL file or pipe
    kDeviceExtern = 6,     ///< window and pixmap of another program
    kDevicePicture = 7,    ///< PNG, SVG or PDF file
};

/// A device and its letters, with which a user's word for it begins.
struct DeviceLetter {
    DeviceKind kind;
    char letter; ///< case ignored
};
inline constexpr DeviceLetter kDeviceLetters[] = {
    {kDeviceMetafile,   'm'},
    {kDevicePostScript, 'p'},
    {kDeviceHpgl,       'h'},
    {kDeviceHpgl,       'q'},
    {kDeviceExtern,     'w'},
    {kDevicePicture,    'i'},
};

constexpr bool is_device_letter(char letter)
{
    for (const DeviceLetter &row : kDeviceLetters) {
        if (letter == row.letter || letter == row.letter - 'a' + 'A') {
            return true;
        }
    }
    return letter == 'd' || letter == 'D'; // the display
}

/// The device that a letter names; the display for others.
constexpr DeviceKind device_of_letter(char letter)
{
    for (const DeviceLetter &row : kDeviceLetters) {
        if (letter == row.letter || letter == row.letter - 'a' + 'A') {
            return row.kind;
        }
    }
    return kDeviceDisplay;
}
