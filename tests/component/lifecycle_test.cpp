#include <stdexcept>
#include <string>
#include <thread>

#include "dialog/frm_main.h"
#include "support/globals.h"
#include "tests/component/component_fixture.h"

namespace mervane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tests::failureOf;
using tests::grid;
using tests::IsFailure;
using tests::RecordingEngine;

class Lifecycle : public tests::ComponentTest {
 protected:
  std::string stack() {
    CErrorHandler& handler = globals::errorHandler();
    handler.ErrorHandlerActions(ehaMessageBox);
    static_cast<void>(handler.HandleError("", Failure(1, "looking")));
    handler.ErrorHandlerActions(ehaErrorForm);
    const std::string report = machine.messageBox->shown.back().text;
    const std::string head = "The call stack is:\r\n";
    return report.substr(report.find(head) + head.size());
  }
};

TEST_F(Lifecycle, ConstructionSetsTheSharedErrorHandlerUp) {
  const CErrorHandler& handler = globals::errorHandler();
  EXPECT_EQ(handler.ErrorHandlerActions(), ehaErrorForm);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_FALSE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), tfLogFile);
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
  EXPECT_EQ(stack(), "") << "construction leaves no entry";
}

TEST_F(Lifecycle, EachConstructionSetsTheHandlerUpAgain) {
  CErrorHandler& handler = globals::errorHandler();
  handler.Init(ehaMessageBox, "x", false, true, 3, "y");
  make(std::make_shared<RecordingEngine>());
  EXPECT_EQ(&globals::errorHandler(), &handler);
  EXPECT_EQ(handler.ErrorHandlerActions(), ehaErrorForm);
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_FALSE(handler.TracingEnabled());
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
}

TEST_F(Lifecycle, ConstructionPushesItsKeyBeforeItSetsTheHandlerUp) {
  // Tracing that an earlier user switched on sees the entry, and no more: the set-up switches it off.
  globals::errorHandler().Init(ehaMessageBox, "x", false, true, tfLogFile, "trace");
  make(std::make_shared<RecordingEngine>());
  EXPECT_THAT(machine.textFiles->content("trace"),
              testing::EndsWith(" --- Entered routine: MervaneClass3.Classifier3.Class_Initialize\r\n"));
}

TEST_F(Lifecycle, EachConstructionSetsTheSupportAddressOfTheDeployment) {
  globals::errorHandler().SupportMail("somebody@example.org");
  make(std::make_shared<RecordingEngine>());
  EXPECT_EQ(globals::errorHandler().SupportMail(), MERVANE_SUPPORT_MAIL);
}

TEST_F(Lifecycle, TheEngineIsMadeWhenTheDialogAndItsBackReferenceAreInPlace) {
  dialog->answers = {"ABORT"};
  auto one = Classifier3::create({[&]() -> std::shared_ptr<NetworkEngine> {
    EXPECT_EQ(globals::errorHandler().ErrorHandlerActions(), ehaErrorForm);
    throw Failure(429, "cannot create");
  }});
  one->CellInputs("A1");
  EXPECT_EQ(one->CellInputs(), "A1");
  const std::weak_ptr<Classifier3> watch = one;
  one.reset();
  ASSERT_FALSE(watch.expired()) << "its dialog refers to it";
  watch.lock()->UnloadfrmMain();
}

TEST_F(Lifecycle, ConstructionCallsNothingOnTheEngine) {
  EXPECT_THAT(engine->calls, IsEmpty());
}

TEST_F(Lifecycle, TheEngineIsMadeOncePerObject) {
  int engines = 0;
  const auto one = Classifier3::create({[&] {
    ++engines;
    return std::make_shared<RecordingEngine>();
  }});
  one->Inputs(grid<double>({{1.0}, {2.0}}));
  one->Run();
  one->Run();
  one->UnloadfrmMain();
  EXPECT_EQ(engines, 1);
}

TEST_F(Lifecycle, AnEngineThatCannotBeMadeIsReportedAndAbortLeavesTheDefaultsUnset) {
  dialog->answers = {"ABORT"};
  const auto one =
      Classifier3::create({[]() -> std::shared_ptr<NetworkEngine> { throw Failure(429, "cannot create"); }});
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 429, (cannot create)\r\n"
                                            "\tin MervaneClass3.Classifier3.Class_Initialize at line 0\r\n"));
  EXPECT_EQ(one->Clusters(), 0);
  EXPECT_EQ(one->LearningRate(), 0.0);
  EXPECT_FALSE(one->AutoScaleInputs());
  one->UnloadfrmMain();
}

TEST_F(Lifecycle, AnEngineThatCannotBeMadeIsLeftOutOnIgnoreAndMissedByRun) {
  dialog->answers = {"IGNORE"};
  const auto one =
      Classifier3::create({[]() -> std::shared_ptr<NetworkEngine> { throw Failure(429, "cannot create"); }});
  EXPECT_EQ(one->Clusters(), 3);
  one->Inputs(grid<double>({{1.0}, {2.0}}));
  one->Run();
  EXPECT_THAT(dialog->reports.at(1), HasSubstr("\tError: 91, (Object variable or With block variable not set)\r\n"
                                               "\tin MervaneClass3.Classifier3.CreateNetwork at line 0\r\n"));
  one->UnloadfrmMain();
}

TEST_F(Lifecycle, AnEngineThatIsMadeAtTheSecondTryIsUsed) {
  dialog->answers = {"RETRY"};
  int tries = 0;
  const auto one = Classifier3::create({[&]() -> std::shared_ptr<NetworkEngine> {
    if (++tries == 1) throw Failure(429, "cannot create");
    return engine;
  }});
  one->Inputs(grid<double>({{1.0}, {2.0}}));
  one->EpochCount(0);
  one->Run();
  EXPECT_THAT(engine->callsOf("Create("), SizeIs(1));
  one->UnloadfrmMain();
}

TEST_F(Lifecycle, AMissingMakerIsReportedLikeAnyFailure) {
  const auto one = Classifier3::create({});
  EXPECT_THAT(dialog->reports, SizeIs(1));
  one->UnloadfrmMain();
}

TEST_F(Lifecycle, TheObjectAndItsDialogKeepEachOtherAliveUntilUnloadfrmMain) {
  auto one = make(std::make_shared<RecordingEngine>());
  const std::weak_ptr<Classifier3> watch = one;
  made.pop_back();
  one.reset();
  ASSERT_FALSE(watch.expired());
  watch.lock()->UnloadfrmMain();
  EXPECT_TRUE(watch.expired());
}

TEST_F(Lifecycle, UnloadfrmMainDestroysTheNetworkOnce) {
  classifier->UnloadfrmMain();
  EXPECT_THAT(engine->calls, ElementsAre("DestroyNetwork()"));
  classifier->UnloadfrmMain();
  EXPECT_THAT(engine->calls, SizeIs(1));
  made.clear();
  classifier.reset();
  EXPECT_THAT(engine->calls, SizeIs(1)) << "destruction finds the fields empty";
}

TEST_F(Lifecycle, UnloadfrmMainDestroysTheNetworkWhileTheDialogIsStillThere) {
  std::string during = "not called";
  classifier->CellInputs("A1:B2");
  engine->beforeCall = [&](const std::string&) { during = classifier->CellInputs(); };
  classifier->UnloadfrmMain();
  EXPECT_EQ(during, "A1:B2");
}

TEST_F(Lifecycle, UnloadfrmMainTakesTheBackReferenceFromADialogThatIsStillUp) {
  long taken = 0;
  user->atNextShowing([&](platform::HeadlessOptionWindow& window) {
    const long before = classifier.use_count();
    classifier->UnloadfrmMain();
    taken = before - classifier.use_count();
    window.press("CLOSE");
  });
  static_cast<void>(failureOf([&] { static_cast<void>(classifier->ShowMainForm()); }));
  EXPECT_EQ(taken, 1);
}

TEST_F(Lifecycle, DestructionLetsGoOfTheDialogFirstAndThenDestroysTheNetwork) {
  // The close box unloads the dialog, and with it goes the reference that keeps the object alive.
  user->atNextShowing([](platform::HeadlessOptionWindow& window) { window.close(); });
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
  std::optional<Failure> during;
  engine->beforeCall = [&, object = classifier.get()](const std::string&) {
    during = failureOf([&] { static_cast<void>(object->CellInputs()); });
  };
  made.clear();
  classifier.reset();
  EXPECT_THAT(engine->calls, ElementsAre("DestroyNetwork()"));
  EXPECT_THAT(during, IsFailure(91, "Object variable or With block variable not set", ""))
      << "the dialog is gone by then";
  EXPECT_EQ(engine.use_count(), 1);
}

TEST_F(Lifecycle, DestructionIgnoresAFailingEngine) {
  user->atNextShowing([](platform::HeadlessOptionWindow& window) { window.close(); });
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
  engine->failing = {1};
  made.clear();
  classifier.reset();
  EXPECT_THAT(engine->calls, SizeIs(1));
  EXPECT_THAT(dialog->reports, IsEmpty());
}

TEST_F(Lifecycle, UnloadfrmMainIgnoresAFailingEngine) {
  engine->failing = {1};
  classifier->UnloadfrmMain();
  EXPECT_EQ(engine.use_count(), 2) << "the object lets go of it; the maker's own copy and the test's remain";
  EXPECT_THAT(dialog->reports, IsEmpty());
}

TEST_F(Lifecycle, RunAndShowMainFormFailAsCallsOnAnEmptyReferenceAfterUnloadfrmMain) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  classifier->UnloadfrmMain();
  classifier->Run();
  ASSERT_FALSE(dialog->reports.empty());
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 91, (Object variable or With block variable not set)\r\n"));
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->ShowMainForm()); }),
              IsFailure(-2147221404, "Classifier3 component failure", "MervaneClass3.Classifier3.ShowMainForm"));
  EXPECT_THAT(failureOf([&] { classifier->CellInputs("A1"); }),
              IsFailure(91, "Object variable or With block variable not set", ""));
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->CellOutputs()); }),
              IsFailure(91, "Object variable or With block variable not set", ""));
}

TEST_F(Lifecycle, TwoObjectsOfAThreadShareOneHandlerAndNothingElse) {
  const auto otherEngine = std::make_shared<RecordingEngine>();
  const auto other = make(otherEngine);
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  classifier->Clusters(2);
  EXPECT_EQ(other->Clusters(), 3);
  EXPECT_TRUE(other->Inputs().isEmpty());

  // A run of the other object in the middle of this one stands above it on the one stack.
  other->Inputs(grid<double>({{1.0}, {2.0}}));
  otherEngine->failing = {1};
  classifier->EpochCount(1);
  dialog->answers = {"IGNORE"};
  classifier->addNextEpochSink([&](std::int32_t&, double&, std::int32_t&) { other->Run(); });
  classifier->Run();
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], testing::EndsWith("                    MervaneClass3.Classifier3.CreateNetwork()\r\n"
                                                    "                    MervaneClass3.Classifier3.Run()\r\n"
                                                    "                    MervaneClass3.Classifier3.TrainNetwork()\r\n"
                                                    "                    MervaneClass3.Classifier3.Run()"));
  EXPECT_THAT(engine->callsOf("Create("), SizeIs(1));
  EXPECT_EQ(stack(), "");
}

TEST_F(Lifecycle, AnAbortOfOneObjectEmptiesTheStackOfTheOther) {
  const auto otherEngine = std::make_shared<RecordingEngine>();
  const auto other = make(otherEngine);
  other->Inputs(grid<double>({{1.0}}));
  other->EpochCount(0);
  otherEngine->failing = {1};
  classifier->Inputs(grid<double>({{1.0}}));
  classifier->EpochCount(1);
  std::string during;
  classifier->addNextEpochSink([&](std::int32_t&, double&, std::int32_t&) {
    other->Run();
    during = stack();
  });
  classifier->Run();
  EXPECT_EQ(during, "");
  EXPECT_THAT(outputs(), ElementsAre(1)) << "the outer run goes on to its end";
}

TEST_F(Lifecycle, AnExceptionOfASinkThatIsNoFailurePassesThroughRunAndLeavesTheObjectReadyForTheNext) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  const std::size_t sink =
      classifier->addNextEpochSink([](std::int32_t&, double&, std::int32_t&) { throw std::runtime_error("enough"); });
  EXPECT_THROW(classifier->Run(), std::runtime_error);
  EXPECT_THAT(dialog->reports, IsEmpty());
  EXPECT_EQ(stack(), "") << "what a later report would list";
  EXPECT_THAT(outputs(), ElementsAre(0, 0)) << "the results are not stored";

  classifier->removeNextEpochSink(sink);
  classifier->Run();
  EXPECT_THAT(outputs(), ElementsAre(1, 3));
}

TEST_F(Lifecycle, ObjectsOfTwoThreadsUseTwoHandlers) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  engine->failing = {1};
  std::thread([] {
    const tests::TestMachine machineThere;
    const auto dialogThere = std::make_shared<tests::ErrorDialogScript>();
    tests::installErrorDialog(*machineThere.services, dialogThere);
    const auto engineThere = std::make_shared<RecordingEngine>();
    engineThere->failing = {1};
    const auto there = Classifier3::create({[&] { return engineThere; }});
    there->Inputs(grid<double>({{1.0}, {2.0}}));
    there->Run();
    there->UnloadfrmMain();
    EXPECT_THAT(dialogThere->reports, SizeIs(1));
  }).join();
  EXPECT_THAT(dialog->reports, IsEmpty());
  EXPECT_EQ(globals::errorHandler().ErrorNumber(), 0);
  classifier->Run();
  EXPECT_THAT(dialog->reports, SizeIs(1));
}

TEST_F(Lifecycle, ReferenceTextsAreForwardedToTheDialog) {
  classifier->CellInputs("Sheet1!B2:C10");
  classifier->CellOutputs("E2");
  EXPECT_EQ(classifier->CellInputs(), "Sheet1!B2:C10");
  EXPECT_EQ(classifier->CellOutputs(), "E2");
  EXPECT_TRUE(classifier->Inputs().isEmpty()) << "the array and the text have nothing to do with each other";
}

}  // namespace
}  // namespace mervane
