#include "mervane/classifier3.h"

#include <algorithm>
#include <utility>

#include "component/network_engine/network_engine.h"
#include "component/procedure_keys.h"
#include "component/sample_cache.h"
#include "component/scale_value.h"
#include "dialog/frm_main.h"
#include "mervane/published_errors.h"
#include "mervane/runtime_errors.h"
#include "support/procedures.h"

namespace mervane {

namespace key = component::key;

namespace {

/// Where the failure dialog offers to send its report. Deployment decides; empty offers nothing.
constexpr const char* supportMail = MERVANE_SUPPORT_MAIL;

[[noreturn]] void refuseArgument() {
  raise(published::invalidArgument, (std::string(serverName) + ".Classifier3").c_str());
}

/// What rate and start weight accept. NB: the second half refuses a not-a-number only because the first one does.
bool isUnitFraction(double value) {
  return 0.0 <= value && !(1.0 <= value);
}

}  // namespace

std::shared_ptr<Classifier3> Classifier3::create(Environment environment) {
  auto classifier = std::make_shared<Classifier3>(Passkey{}, std::move(environment));
  classifier->Class_Initialize();
  return classifier;
}

Classifier3::Classifier3(Passkey, Environment environment)
    : environment_(std::move(environment)), samples_(std::make_unique<SampleCache>()) {}

void Classifier3::Class_Initialize() {
  traced(key::Class_Initialize, [&](Steps& step) {
    // 1. NB: done anew for each object of the thread, on the one handler that they share.
    step([&] {
      globals::errorHandler().Init(ehaErrorForm, "Error Log.txt", true, false, tfLogFile, "Tracing Log.txt");
    });
    step([&] { globals::errorHandler().SupportMail(supportMail); });
    // 2.
    step([&] { MainForm_ = std::make_shared<frmMain>(); });
    step([&] { mainForm().Classifier(shared_from_this()); });
    // 3.
    step([&] {
      if (!environment_.createEngine) raise(runtime::objectNotSet);
      NetworkHandle_ = environment_.createEngine();
    });
    // 4.
    InputData_ = Variant();
    // 5.
    Clusters_ = 3;
    InitialWeights_ = 0.3;
    LearningRadius_ = 3.0;
    LearningRate_ = 0.5;
    EpochCount_ = 100;
    UseConvexCombination_ = true;
    AutoScaleInputs_ = true;
    ActivationFunction_ = ACTIVATE_FUNC_EXP05;
  });
}

Classifier3::~Classifier3() {
  // NB: the opposite order of UnloadfrmMain.
  // 1.
  if (MainForm_) attempt([&] { MainForm_->Classifier(nullptr); });
  MainForm_.reset();
  // 2.
  if (NetworkHandle_) attempt([&] { NetworkHandle_->DestroyNetwork(); });
  NetworkHandle_.reset();
}

void Classifier3::UnloadfrmMain() {
  const auto self = weak_from_this().lock();  // The dialog may hold the last reference.
  // 1.
  if (NetworkHandle_) {
    attempt([&] { NetworkHandle_->DestroyNetwork(); });
    NetworkHandle_.reset();
  }
  // 2.
  if (MainForm_) {
    attempt([&] { MainForm_->Classifier(nullptr); });
    MainForm_.reset();
  }
}

NetworkEngine& Classifier3::network() const {
  if (!NetworkHandle_) raise(runtime::objectNotSet);
  return *NetworkHandle_;
}

frmMain& Classifier3::mainForm() const {
  if (!MainForm_) raise(runtime::objectNotSet);
  return *MainForm_;
}

void Classifier3::ExcelApplication(std::shared_ptr<sheet::Object> application) {
  ExcelApplication_ = std::move(application);
}
std::shared_ptr<sheet::Object> Classifier3::ExcelApplication() const {
  return ExcelApplication_;
}

void Classifier3::Inputs(const Variant& value) {
  // 1.
  if (!value.isArray()) refuseArgument();
  // 2.
  samples_->drop();
  InputData_ = value;
  // 3. NB: a failure from here on leaves the new array in place.
  CalculateColumnRanges();
  // 4.
  OutputData_ = Array<std::int32_t>({inputArray().bounds().front()});
}

Variant Classifier3::Inputs() const {
  return InputData_;
}

double Classifier3::getMaxValue(std::int32_t column) const {
  return MaxValues_.at(column);
}
double Classifier3::getMinValue(std::int32_t column) const {
  return MinValues_.at(column);
}

Array<std::int32_t> Classifier3::Outputs() const {
  return OutputData_;
}

void Classifier3::InitialWeights(double value) {
  if (!isUnitFraction(value)) refuseArgument();
  InitialWeights_ = value;
}
double Classifier3::InitialWeights() const noexcept {
  return InitialWeights_;
}

void Classifier3::ActivationFunction(enuActivationFunction value) {
  ActivationFunction_ = value;
}
enuActivationFunction Classifier3::ActivationFunction() const noexcept {
  return ActivationFunction_;
}

void Classifier3::Clusters(std::int32_t value) {
  Clusters_ = value;
}
std::int32_t Classifier3::Clusters() const noexcept {
  return Clusters_;
}

void Classifier3::LearningRadius(double value) {
  LearningRadius_ = value;
}
double Classifier3::LearningRadius() const noexcept {
  return LearningRadius_;
}

void Classifier3::LearningRate(double value) {
  if (!isUnitFraction(value)) refuseArgument();
  LearningRate_ = value;
}
double Classifier3::LearningRate() const noexcept {
  return LearningRate_;
}

void Classifier3::EpochCount(std::int32_t value) {
  EpochCount_ = value;
}
std::int32_t Classifier3::EpochCount() const noexcept {
  return EpochCount_;
}

void Classifier3::UseConvexCombination(bool value) {
  UseConvexCombination_ = value;
}
bool Classifier3::UseConvexCombination() const noexcept {
  return UseConvexCombination_;
}

void Classifier3::AutoScaleInputs(bool value) {
  AutoScaleInputs_ = value;
}
bool Classifier3::AutoScaleInputs() const noexcept {
  return AutoScaleInputs_;
}

void Classifier3::StopLearning() noexcept {
  StopRequested_ = true;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a published member of the object.
double Classifier3::ScaleValue(double value, double minSrcRangeValue, double maxSrcRangeValue, double minDestRangeValue,
                               double maxDestRangeValue) const noexcept {
  return scaleValue(value, minSrcRangeValue, maxSrcRangeValue, minDestRangeValue, maxDestRangeValue);
}

std::size_t Classifier3::addNextEpochSink(NextEpochSink sink) {
  sinks_.push_back({nextSinkId_, std::make_shared<const NextEpochSink>(std::move(sink))});
  return nextSinkId_++;
}

void Classifier3::removeNextEpochSink(std::size_t sink) {
  std::erase_if(sinks_, [&](const Sink& one) { return one.id == sink; });
}

}  // namespace mervane
