#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace barcode::test {

// The message of the exception that an action throws, of a type that the caller may narrow; "" and a test
// failure when it throws none.
template <class Exception = std::exception, class Action>
std::string MessageOf(Action action) {
  try {
    action();
  } catch (const Exception& error) {
    return error.what();
  }
  ADD_FAILURE() << "nothing was thrown";
  return "";
}

}  // namespace barcode::test
