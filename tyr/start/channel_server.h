#pragma once

#include <string>

#include <sys/types.h>

// The other half of the message channel (channel.h): what a loop window answers to the programs
// that ask it for their resources. It runs in a process of its own, so that answers don't wait for
// drawing, and ends with the process that started it, however that ends; it then takes away the
// queue and the file that tells of the window.

/// What a server begins with.
struct ChannelServer {
    int window = 1;      ///< number of the window, the key of the queue
    std::string id_file; ///< removed at the end; empty for none
};

/// Starts a server. A queue that was left behind is taken over.
/// @return its process; -1, told, when the queue can't be had
pid_t CHAN_start_server(const ChannelServer &server);
/// Ends it, and waits until it has tidied up.
void CHAN_end_server(pid_t process);

/// Tells the server a value: one that clients may change (`set`), or one that they can't (`fix`).
/// 0, or -1 on failure.
int CHAN_set_value(int window, const std::string &name, const std::string &value);
int CHAN_fix_value(int window, const std::string &name, const std::string &value);
