#include "support/screen.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/run.h"
#include "tyr/image/palette_private.h"
#include "tyr/x11/x11_image.h"

using namespace tyr;

namespace {

constexpr int kStartMilliseconds = 20000;

/// Reads the number of the display that the server has taken, as it writes it.
std::string read_number(int fd)
{
    std::string text;
    pollfd waiting{fd, POLLIN, 0};
    while (text.empty() || text.back() != '\n') {
        char byte = 0;
        if (poll(&waiting, 1, kStartMilliseconds) <= 0 || read(fd, &byte, 1) != 1) {
            return {};
        }
        text += byte;
    }
    text.pop_back();
    return text;
}

/// The server's process.
class Server {
  public:
    Server();
    ~Server();
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;
    const std::string &name() const { return name_; }
    pid_t process() const { return process_; }

  private:
    pid_t process_ = -1;
    std::string name_;
};

Server::Server()
{
    int ends[2];
    if (!have_program("Xvfb") || pipe(ends) != 0) {
        return;
    }
    process_ = fork();
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that dies leaves no server behind
        close(ends[0]);
        const int null_device = open("/dev/null", O_RDWR);
        dup2(null_device, STDOUT_FILENO);
        dup2(null_device, STDERR_FILENO);
        execlp("Xvfb", "Xvfb", "-displayfd", std::to_string(ends[1]).c_str(), "-screen", "0",
               "1200x900x24", "-fp", "built-ins", "-nolisten", "tcp", "-noreset", nullptr);
        _exit(127);
    }
    close(ends[1]);
    const std::string number = read_number(ends[0]);
    close(ends[0]);
    name_ = number.empty() ? "" : ":" + number;
}

Server::~Server()
{
    if (process_ > 0) {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
    }
}

const Server &server()
{
    static const Server started;
    return started;
}

} // namespace

VirtualScreen::VirtualScreen()
{
    if (is_there()) {
        setenv("DISPLAY", name().c_str(), 1);
    }
}

const std::string &VirtualScreen::name() const
{
    return server().name();
}

pid_t VirtualScreen::process() const
{
    return server().process();
}

unsigned Picture::at(int x, int y) const
{
    return pixels.at(static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x));
}

int Picture::count(unsigned colour) const
{
    int found = 0;
    for (const unsigned pixel : pixels) {
        found += pixel == colour ? 1 : 0;
    }
    return found;
}

int Picture::differences(const Picture &other) const
{
    if (pixels.size() != other.pixels.size() || width != other.width) {
        return static_cast<int>(pixels.size());
    }
    int found = 0;
    for (size_t i = 0; i < pixels.size(); i++) {
        found += pixels[i] != other.pixels[i] ? 1 : 0;
    }
    return found;
}

Picture grab_picture()
{
    Picture picture;
    ImageRec image;
    if (gget_image(&image) == 0) {
        return picture;
    }
    picture.width = image.width;
    picture.height = image.height;
    for (int y = 0; y < image.height; y++) {
        for (int x = 0; x < image.width; x++) {
            picture.pixels.push_back(image_pixel(image, x, y) & 0xFFFFFFU);
        }
    }
    IMG_free(&image);
    return picture;
}

Picture read_picture(const std::string &path)
{
    const RunResult size = run({"/usr/bin/identify", "-format", "%w %h", path});
    const RunResult bytes = run({"/usr/bin/convert", path, "-depth", "8", "rgb:-"});
    Picture picture;
    if (std::sscanf(size.out.c_str(), "%d %d", &picture.width, &picture.height) != 2) {
        return {};
    }
    const auto part = [&](size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(bytes.out[i]));
    };
    for (size_t i = 0; i + 2 < bytes.out.size(); i += 3) {
        picture.pixels.push_back(part(i) << 16 | part(i + 1) << 8 | part(i + 2));
    }
    return picture;
}
