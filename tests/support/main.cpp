#include <gtest/gtest.h>

#include "support/own_folder.h"

int main(int argumentCount, char** arguments) {
  return support::RunInOwnFolder(argumentCount, arguments, [](int count, char** values) {
    testing::InitGoogleTest(&count, values);
    return RUN_ALL_TESTS();
  });
}
