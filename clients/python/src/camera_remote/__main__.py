"""The command-line program: `camera-remote`, or `python3 -m camera_remote`."""

from camera_remote.command_line import main

if __name__ == "__main__":
    raise SystemExit(main())
