// The machine's own library, with a driver in the network behind it.
#pragma once

#include <dlfcn.h>

#include <gtest/gtest.h>

#include "fakes/CapiServer.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/Capi20Library.h"

namespace vorlix {

class CapiMachine : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(dlopen(Capi20Library::kFile, RTLD_NOW), nullptr) << "the package libcapi20-3 is missing";
    ASSERT_TRUE(driver.IsDLLAvailable());
  }

  TemporaryFolder home;
  CapiServer server{port};
  TemporaryVariable variable{"HOME", (server.WriteConfiguration(home.Path()), port = server.Port(), home.Path())};
  Capi20Library driver;

 private:
  static inline int port = 0;  // the library reads its configuration once
};

}  // namespace vorlix
