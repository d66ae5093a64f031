#include "cli/program.h"

#include <exception>
#include <new>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/error_answers.h"
#include "cli/interruption.h"
#include "cli/output_file.h"
#include "cli/problem.h"
#include "cli/services.h"
#include "cli/settings_command.h"
#include "cli/talk.h"
#include "mervane/failure.h"

namespace mervane::cli {
namespace {

class Dispatch {
 public:
  explicit Dispatch(Talk& talk) : talk_(talk) {}

  ExitStatus operator()(const TextToPrint& request) const {
    const auto out = openOutput("-");
    out->write(request.text);
    out->commit();
    return ExitStatus::done;
  }
  ExitStatus operator()(const ClusterOptions& options) const {
    talk_.level(options.level);
    return cluster(options, talk_);
  }
  ExitStatus operator()(const SheetsOptions& options) const { return sheets(options); }
  ExitStatus operator()(const SettingsOptions& options) const {
    ErrorAnswers answers(talk_, {});
    const ServicesInUse services(rememberingServices(answers));
    return settings(options);
  }

 private:
  Talk& talk_;
};

ExitStatus told(Talk& talk, const Problem& problem) {
  talk.error(problem);
  return problem.status();
}

}  // namespace

ExitStatus runProgram(const std::vector<std::string>& arguments) noexcept {
  Talk talk;
  try {
    interruption::watch();
    return std::visit(Dispatch(talk), parseArguments(arguments));
  } catch (const Problem& problem) {
    return told(talk, problem);
  } catch (const Failure& failure) {
    return told(talk, Problem(ExitStatus::engineFailure, failure.description()));
  } catch (const std::bad_alloc&) {
    return told(talk, Problem(ExitStatus::engineFailure, "there is not enough memory", "Take a part of the data."));
  } catch (const std::exception& error) {
    return told(talk, Problem(ExitStatus::engineFailure, std::string("internal failure: ") + error.what()));
  }
}

}  // namespace mervane::cli
