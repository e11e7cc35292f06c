/// The version, for people who find a handler on a camera: nothing reads it at run time.
/// docs/integration.md names the command that prints it.
[[gnu::used, gnu::retain]] const char g_version[] = "camera_remote.cgi version " CAMERA_VERSION;
