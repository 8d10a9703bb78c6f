// The window of loops: keeps the frames that other programs draw, shows them one after the other
// and writes them as a moving picture. Programs find it by its number.

#include <array>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/sys.h"
#include "tyr/base/whole_file.h"
#include "tyr/gks/gks.h"
#include "tyr/image/gif.h"
#include "tyr/plot/plot_session.h"
#include "tyr/start/channel_server.h"
#include "tyr/start/convert.h"
#include "tyr/start/option_codes.h"
#include "tyr/start/options.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/published_window.h"
#include "tyr/x11/x11_image.h"

using namespace tyr;

namespace {

constexpr int kKeyed[] = {kOptHelp,      kOptMessage,    kOptFilePath,  kOptImagePath, kOptFontList,
                          kOptPlotParam, kOptParameter,  kOptDevice,    kOptTitle,     kOptIcon,
                          kOptGeometry,  kOptBackground, kOptWindowNum, kOptOutFile,   0};
constexpr int kPositional[] = {kOptCommands, 0};

constexpr char kDefaultGif[] = "tyrloop.gif";
constexpr float kHundredths = 100.0F;

struct State {
    int window = 1;
    std::string id_file;
    pid_t server = -1;
    pid_t commands = -1;
};

State state;

/// Writes the window's number where the programs look for it, and lets the server tell it.
void publish()
{
    const std::string id = gwindow_id();
    WholeFile file;
    if (file.open(state.id_file.c_str())) {
        std::fprintf(file.stream(), "%s\n%d\n", id.c_str(), static_cast<int>(getpid()));
    }
    if (!file || file.keep() != 0) {
        MSG_out(kMsgWarn, "tyrloop: %s: %s\n", state.id_file.c_str(), std::strerror(errno));
    }
    CHAN_fix_value(state.window, "device",
                   std::string("w,") + ginq_display_name() + "," + id + ",new");
}

/// Process number of the loop window that an id file tells of; 0 when it doesn't run.
pid_t running_owner(const std::string &path)
{
    const FilePtr file(FILE_open(path.c_str(), "r"));
    int process = 0;
    const bool is_read = file && std::fscanf(file.get(), "%*s %9d", &process) == 1;
    return is_read && process > 0 && kill(process, 0) == 0 ? process : 0;
}

/// Picture number i of the loop. The draw target is put back by the caller.
int grab_frame(int i, ImageRec *image)
{
    gselect_frame(i);
    return gget_image(image);
}

void save_loop()
{
    const int count = ginq_frames();
    if (count == 0) {
        MSG_out(kMsgWarn, "tyrloop: no frames to save\n");
        return;
    }
    std::vector<int> delays(static_cast<size_t>(count));
    for (int i = 0; i < count; i++) {
        delays[static_cast<size_t>(i)] =
            static_cast<int>(std::lround(ginq_frame_dwell(i) * kHundredths));
    }
    const char *name = RES_get("out_file");
    std::array<char, kFileNameRoom> path{};
    FILE_join(RES_get("image_path"), name != nullptr ? name : kDefaultGif, path.data());
    const int recording = ginq_recording();
    const bool is_written = GIF_write_loop(path.data(), count, delays.data(), grab_frame) == 1;
    gselect_frame(kBackingPixmap);
    gset_recording(recording);
    if (is_written) {
        MSG_out(kMsgMess, "Created GIF loop of %d frames: %s\n", count, path.data());
    } else {
        MSG_out(kMsgWarn, "tyrloop: Unable to write GIF loop: %s\n", path.data());
    }
}

/// Keys beside those of every window: Alt s saves, Alt r rocks, Alt b turns round.
void on_event(int, const char *event, float, float)
{
    const int direction = ginq_loop_direction();
    if (std::strcmp(event, "size") == 0) {
        gclear_ws(1, 1); // the frames are gone, and the pixmap is another
        gupdate_ws();
        publish();
    } else if (std::strcmp(event, "d-Alt") == 0) {
        publish(); // the last frame's pixmap is the one that others draw into
    } else if (std::strcmp(event, "s-Alt") == 0) {
        save_loop();
    } else if (std::strcmp(event, "r-Alt") == 0) {
        gset_loop_direction(direction < 2 ? direction + 2 : direction - 2);
    } else if (std::strcmp(event, "b-Alt") == 0) {
        gset_loop_direction(direction ^ 1);
    }
}

/// Runs the commands one after the other, each of which draws a frame of this window.
[[noreturn]] void run_commands(const std::vector<std::string> &commands)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    setenv("tyrdevice", ("w,,w" + std::to_string(state.window) + ",new").c_str(), 1);
    for (const std::string &command : commands) {
        const int status = std::system(command.c_str());
        if (status == -1 || !WIFEXITED(status)) {
            MSG_out(kMsgWarn, "tyrloop: Command was broken off: %s\n", command.c_str());
        } else if (WEXITSTATUS(status) != 0) {
            MSG_out(kMsgWarn, "tyrloop: Command ended with code %d: %s\n", WEXITSTATUS(status),
                    command.c_str());
        }
    }
    _exit(0);
}

void start_commands()
{
    const std::vector<std::string> commands = RES_list("command");
    if (commands.empty()) {
        return;
    }
    std::fflush(nullptr);
    state.commands = fork();
    if (state.commands == 0) {
        run_commands(commands);
    }
}

/// What the programs are to find at the window: `-pa name=value,...`.
void set_values()
{
    for (const std::string &word : RES_list("parameter")) {
        if (const size_t sign = word.find('='); sign != std::string::npos) {
            CHAN_set_value(state.window, word.substr(0, sign), word.substr(sign + 1));
        }
    }
}

/// The number of the window, its file and its channel; ends the program where another window has
/// the number.
void claim_number()
{
    int number = 0;
    if (RES_get_value("window_num", &number, kResInt) != 0 && number > 0) {
        state.window = number;
    }
    const std::string folder = gwindow_folder(true);
    if (folder.empty()) {
        MSG_out(kMsgError, "tyrloop: no folder of this user's own for the window's number\n");
        SYS_exit(kExitNoGraphics);
    }
    state.id_file = folder + "/tyrloop." + std::to_string(state.window);
    if (const pid_t owner = running_owner(state.id_file); owner != 0) {
        MSG_out(kMsgError, "tyrloop: window %d is in use by process %d: choose another with -wn\n",
                state.window, static_cast<int>(owner));
        SYS_exit(kExitNoGraphics);
    }
    state.server = CHAN_start_server({state.window, state.id_file});
    if (state.server < 0) {
        SYS_exit(kExitNoGraphics);
    }
}

void choose_display()
{
    const char *device = RES_get("device");
    if (device == nullptr) {
        RES_put("device", "d");
    } else if (device[0] != 'd' && device[0] != 'D') {
        MSG_out(kMsgError, "tyrloop: a loop needs a window, not device %s\n", device);
        SYS_exit(kExitNoGraphics);
    }
    if (RES_get("title") == nullptr) {
        RES_put("title", ("TYRloop " + std::to_string(state.window)).c_str());
    }
}

void print_usage()
{
    MSG_out(kMsgPrint, "tyrloop: This program shows the plots of other programs as a loop\n");
    OPT_usage("tyrloop", kKeyed, kPositional);
    MSG_out(kMsgPrint,
            "Keys: Alt l loop or stop, Alt [ and ] step or change the speed, Alt r rock,"
            "\n   Alt b turn round, Alt s save as a moving GIF, Alt d delete, Alt q end\n");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        MSG_out(kMsgPrint, "tyrloop %s\n", SYS_version());
        return kExitNormal;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // its messages come over hours
    OPT_init(argc, argv, kKeyed, kPositional);
    if (PRM_is_help() != 0) {
        print_usage();
        SYS_exit(kExitNormal);
    }
    MSG_banner("LOOP WINDOW");
    claim_number();
    choose_display();
    set_values();
    if (PLT_begin(0.0F) != 0) {
        CHAN_end_server(state.server);
        return kExitNormal;
    }
    PLT_set_callback(on_event);
    publish();
    MSG_out(kMsgMess,
            "Window %d is there: draw into it with -de w,,w%d,new, or start programs with"
            " -df '#%d'\n",
            state.window, state.window, state.window);
    start_commands();
    PLT_end();
    if (state.commands > 0) {
        kill(state.commands, SIGTERM);
    }
    CHAN_end_server(state.server);
    return kExitNormal;
}
