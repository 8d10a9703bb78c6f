#include "tyr/x11/x11_error.h"

#include <array>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/sys.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr int kMaxErrors = 25;
constexpr int kErrorRoom = 80;
constexpr int kRequestRoom = 60;

void free_frames()
{
    if (gis_display()) {
        gfree_frames();
    }
}

/// While this process draws into another program's window: whether that has gone.
bool is_lost_window(const XErrorEvent &e)
{
    const bool is_about =
        e.error_code == BadDrawable || e.error_code == BadPixmap || e.error_code == BadWindow;
    return is_about && gis_extern_window() && ginq_open() != 0 &&
           (e.resourceid == x11().pixmap || e.resourceid == x11().window);
}

} // namespace

int gx_error(Display *d, XErrorEvent *e)
{
    x11().error_seen = true;
    if (!x11().report_errors) {
        return 0;
    }
    if (is_lost_window(*e)) {
        x11().report_errors = false;
        MSG_out(kMsgWarn, "gx_error: the window of the other program is gone\n");
        MSG_out(kMsgError, "Fatal X11 Error\n");
        SYS_exit(kExitNoGraphics);
    }
    std::array<char, kErrorRoom> text{};
    std::array<char, kRequestRoom> request{};
    XGetErrorText(d, e->error_code, text.data(), kErrorRoom);
    XGetErrorDatabaseText(d, "XRequest", std::to_string(e->request_code).c_str(), "",
                          request.data(), kRequestRoom);
    MSG_out(kMsgWarn, "X11 error: %s in %s\n", text.data(), request.data());
    if (++x11().errors >= kMaxErrors) {
        MSG_out(kMsgError, "X11 error: too many errors\n");
        x11().report_errors = false; // frames that are gone would call this again
        free_frames();
        SYS_exit(kExitNoGraphics);
    }
    return 0;
}

int gx_io_error(Display *)
{
    // the connection is gone, and the server has freed the frames with it
    MSG_out(kMsgError, "Fatal X11 Error\n");
    SYS_exit(kExitNoGraphics);
}
