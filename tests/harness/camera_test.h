#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "harness/exchanges.h"
#include "harness/fake_daemon.h"
#include "harness/files.h"
#include "harness/handler.h"
#include "harness/messages.h"
#include "harness/private_world.h"
#include "harness/status_block.h"
#include "harness/system_log.h"

namespace harness {

/// Base of the black-box tests: an empty camera with a system log, where a client has logged in
/// with the session id `kSession`. Daemons are added by the tests.
class CameraTest : public testing::Test {
 protected:
  CameraTest() { WriteSession(kSession); }

  /// A POST with this body from the web server.
  static Outcome Post(const std::string& body) { return RunHandler(Request(body)); }

  SystemLog log_;
};

}  // namespace harness
