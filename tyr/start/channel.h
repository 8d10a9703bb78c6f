#pragma once

// The message channel to a loop window, a program of its own that holds the resources of a series
// of plots. It goes over a System V message queue (key: the window's number) or, by choice, over a
// TCP connection to this machine (port: the same number). Whoever doesn't answer in time ends the
// process with code 7.

/// Bytes of a queue message's text: a code character, then a text with its end.
inline constexpr int kChannelRoom = 120;
/// Room of the text that CHAN_receive hands out.
inline constexpr int kChannelText = 256;

/// Codes of messages; a client sends its own id.
enum ChannelCode {
    kChannelGone = -3,    ///< the loop program doesn't run any more
    kChannelConnect = -1, ///< a client asks for an id
    kChannelLine = 0,     ///< a line of a reply; any other code ends it
    kChannelClient = 2,   ///< the reply to a connect request, with the id
};

/// Reads the resource `parameter`: "qtype=sock" and "qtype=mqueue" choose the transport, a word
/// that begins with "to" sets the time-out in seconds (20 at first) from its fourth character on.
void CHAN_options();
/// Opens the channel to a window. The queue's id, 1 for a socket; -1 if there is no queue or no
/// connection, 0 for another failure.
int CHAN_connect(int window);
/// Asks the window for an id as its client. -1 if it gives none.
int CHAN_hello(int queue);
/// Sends a message to the window; a text that is too long is cut. 0, or -1 on failure.
int CHAN_send(int queue, int code, const char *format, ...) __attribute__((format(printf, 3, 4)));
/// Waits for a message to client `id`; `text` (kChannelText) gets what it says. Its code; -1 on
/// failure.
int CHAN_receive(int queue, int id, char *text);
/// Takes all messages of a type out of the queue.
void CHAN_drain(int queue, int type);
/// Ends a socket's connection.
void CHAN_close();
