/* The floor under a web server: a program that answers without reading the request. */
#include <unistd.h>

static const char kReply[] =
    "Content-type: application/json\nContent-Length:37\n\n"
    "{\"Response\":{\"Result\":\"CommandError\"}}";

int main(void) { return write(STDOUT_FILENO, kReply, sizeof kReply - 1) > 0 ? 0 : 1; }
