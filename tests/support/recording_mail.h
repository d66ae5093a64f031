#pragma once

#include <string>
#include <vector>

#include "platform/mail.h"
#include "tests/support/call_script.h"

namespace mervane::tests {

class RecordingMail : public platform::Mail {
 public:
  explicit RecordingMail(std::shared_ptr<Journal> journal = nullptr) : script(std::move(journal)) {}

  void open(const std::string& url) override {
    script.enter("mail.open");
    urls.push_back(url);
  }

  std::vector<std::string> urls;
  CallScript script;
};

}  // namespace mervane::tests
