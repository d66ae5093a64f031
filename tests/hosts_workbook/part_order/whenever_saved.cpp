#include <gtest/gtest.h>

#include "tests/hosts_workbook/fixture.h"
#include "tests/hosts_workbook/part_order/part_order.h"

namespace mervane::workbook::tests {

namespace {

void expectOrder(const std::map<std::string, std::string>& parts) {
  EXPECT_EQ(faultsOfBook(parts), std::vector<std::string>());
}

/// A program that has this file among its sources checks everything that it saves.
[[maybe_unused]] const auto installed = (whenSaved = &expectOrder);

}  // namespace

}  // namespace mervane::workbook::tests
