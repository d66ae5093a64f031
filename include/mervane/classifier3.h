#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mervane/array.h"
#include "mervane/enumerations.h"
#include "mervane/failure.h"
#include "mervane/variant.h"

namespace mervane {

class NetworkEngine;
class SampleCache;
class SampleBlocks;
class frmMain;

/// Groups numeric rows into clusters with a neural network, for an array of the client's or for a worksheet range.
///
/// An array client sets parameters and Inputs, calls Run and reads Outputs. A spreadsheet host sets ExcelApplication
/// and calls ShowMainForm until it answers "CLOSE". Either way it calls UnloadfrmMain before it lets go: the object
/// and its dialog hold counted references to each other, and only that call breaks the circle.
///
/// One thread owns an object, and that thread's services come from `globals::platform()`. Failures inside the
/// network run and the worksheet flow are shown by the thread's CErrorHandler and raised to nobody.
class Classifier3 : public std::enable_shared_from_this<Classifier3> {
  struct Passkey {
    explicit Passkey() = default;
  };

 public:
  /// What the object needs from whoever puts the system together.
  struct Environment {
    /// Makes the network object; called once, during construction.
    std::function<std::shared_ptr<NetworkEngine>()> createEngine;
  };

  /// Constructs the object, sets up the shared error handler, makes dialog and engine, sets the defaults.
  /// A step that fails is shown by the error handler; after an abort the steps behind it are left out.
  [[nodiscard]] static std::shared_ptr<Classifier3> create(Environment environment);

  Classifier3(Passkey, Environment environment);
  ~Classifier3();
  Classifier3(const Classifier3&) = delete;
  Classifier3& operator=(const Classifier3&) = delete;

  /// The spreadsheet application; set by the host before any worksheet work. Not checked.
  void ExcelApplication(std::shared_ptr<sheet::Object> application);
  [[nodiscard]] std::shared_ptr<sheet::Object> ExcelApplication() const;

  /// A two-dimensional array, rows by columns, of any bounds and any element type that converts to a double.
  /// Setting it computes the column ranges and gives Outputs the bounds of the rows, filled with 0.
  /// Raises eErr_InvalidArgument for anything but an array, changing nothing. An array of other dimensions, or with
  /// elements that do not convert, raises the run-time error after it has already become the value of Inputs.
  void Inputs(const Variant& value);
  /// Shares the array; nothing is copied.
  [[nodiscard]] Variant Inputs() const;

  /// Largest raw value of one column of Inputs.
  /// @param column zero-based position, 0 to the column count; the last one always holds 0.0.
  ///     Raises subscriptOutOfRange beyond, and before Inputs has been set.
  [[nodiscard]] double getMaxValue(std::int32_t column) const;
  /// Smallest raw value of one column of Inputs; see getMaxValue.
  [[nodiscard]] double getMinValue(std::int32_t column) const;

  /// One cluster number for each row, 1 to Clusters; 0 where a row has none yet. No dimensions before Inputs is set.
  [[nodiscard]] Array<std::int32_t> Outputs() const;

  void InitialWeights(double value);  ///< 0 <= value < 1, otherwise raises eErr_InvalidArgument
  [[nodiscard]] double InitialWeights() const noexcept;
  void ActivationFunction(enuActivationFunction value);  ///< any 32-bit value
  [[nodiscard]] enuActivationFunction ActivationFunction() const noexcept;
  void Clusters(std::int32_t value);  ///< not checked; takes effect with the next Run
  [[nodiscard]] std::int32_t Clusters() const noexcept;
  void LearningRadius(double value);  ///< not checked; takes effect with the next epoch
  [[nodiscard]] double LearningRadius() const noexcept;
  void LearningRate(double value);  ///< 0 <= value < 1, otherwise raises eErr_InvalidArgument
  [[nodiscard]] double LearningRate() const noexcept;
  void EpochCount(std::int32_t value);  ///< not checked; a running training keeps its loop bound
  [[nodiscard]] std::int32_t EpochCount() const noexcept;
  void UseConvexCombination(bool value);
  [[nodiscard]] bool UseConvexCombination() const noexcept;
  void AutoScaleInputs(bool value);
  [[nodiscard]] bool AutoScaleInputs() const noexcept;

  /// Ends a running training after the pass of the next epoch; the results are stored all the same.
  /// Forgotten where no training is running.
  void StopLearning() noexcept;
  /// Builds the network, trains it and fills Outputs. Raises nothing of its own and gives no status.
  void Run();

  /// Rows and columns of Inputs; the run time's array errors for empty or one-dimensional Inputs.
  [[nodiscard]] std::int32_t GetSamplesCount() const;
  [[nodiscard]] std::int32_t GetColumnsCount() const;
  /// Maps a value linearly from a source range onto a destination range. What lies outside the source range keeps its
  /// own size; a source or destination range of one point gives the destination's lower end.
  [[nodiscard]] double ScaleValue(double value, double minSrcRangeValue, double maxSrcRangeValue,
                                  double minDestRangeValue, double maxDestRangeValue) const noexcept;

  /// Shows the options dialog and, on "Clusterize", clusters the range it names.
  /// @return "CLOSE", "INVALIDDATA" after a refused check, "INPUTS" or "OUTPUTS" where the host is to let the user
  ///     pick a range. Raises "Classifier3 component failure" whatever fails.
  [[nodiscard]] std::string ShowMainForm();

  /// The reference texts of the dialog.
  void CellInputs(const std::string& reference);
  [[nodiscard]] std::string CellInputs() const;
  void CellOutputs(const std::string& reference);
  [[nodiscard]] std::string CellOutputs() const;

  /// Destroys the network and lets go of the dialog. The object is of no use for Run and ShowMainForm afterwards.
  void UnloadfrmMain();

  /// Called on the thread of Run after each epoch but one that ends by StopLearning.
  /// @param epoch the loop counter itself: training goes on behind an assigned value.
  /// @param currentLearningRate, currentRadius copies of the values of the epoch just finished.
  /// A Failure that a sink raises counts as a failure of the training. Any other exception ends the run and passes to
  /// the caller of Run; Outputs keep what they held, and Run may be called again.
  using NextEpochSink =
      std::function<void(std::int32_t& epoch, double& currentLearningRate, std::int32_t& currentRadius)>;
  /// @return a number for removeNextEpochSink. Sinks are called in the order of their adding.
  std::size_t addNextEpochSink(NextEpochSink sink);
  /// An unknown number does nothing.
  void removeNextEpochSink(std::size_t sink);

 private:
  struct Sink {
    std::size_t id;
    std::shared_ptr<const NextEpochSink> call;
  };

  void Class_Initialize();
  void CalculateColumnRanges();

  void CreateNetwork();
  void InitializeWeights();
  void TrainNetwork();
  double GetCurrentLearningRate(std::int32_t epoch) const;
  std::int32_t GetCurrentRadius(std::int32_t epoch) const;
  void raiseNextEpoch(std::int32_t& epoch, double rate, std::int32_t radius);
  void TrainEpoch(std::int32_t epoch);
  std::int32_t GetSampleIndex(std::int32_t row) const;
  std::vector<double> GetSampleVector(std::int32_t row, std::int32_t columns) const;
  void SetNetworkInputs(const std::vector<double>& sample, double convexFactor);
  void StoreResults();

  bool Classify();
  void PrepareClassification();
  void StoreResultsToExcel();
  void SelectOutputCells();

  SampleBlocks* sampleBlocks() const;
  std::int64_t learnInBlocks(std::int32_t epoch);
  std::int64_t classifyInBlocks(std::int64_t firstRow, std::int64_t lastRow, std::int32_t& winner,
                                std::optional<Failure>& refusal);

  NetworkEngine& network() const;
  frmMain& mainForm() const;
  const AnyArray& inputArray() const;

  Environment environment_;

  std::shared_ptr<NetworkEngine> NetworkHandle_;
  Variant InputData_;
  Array<double> MinValues_;
  Array<double> MaxValues_;
  Array<std::int32_t> OutputData_;
  std::int32_t Clusters_ = 0;
  double InitialWeights_ = 0.0;
  double LearningRadius_ = 0.0;
  double LearningRate_ = 0.0;
  std::int32_t EpochCount_ = 0;
  bool UseConvexCombination_ = false;
  bool AutoScaleInputs_ = false;
  bool StopRequested_ = false;
  enuActivationFunction ActivationFunction_ = ACTIVATE_FUNC_DEFAULT;
  std::shared_ptr<frmMain> MainForm_;
  std::shared_ptr<sheet::Object> ExcelApplication_;

  std::vector<Sink> sinks_;
  std::size_t nextSinkId_ = 1;
  std::unique_ptr<SampleCache> samples_;
  std::int32_t builtInputs_ = 0;  ///< inputs of the network in NetworkHandle_, 0 where there is none for certain
};

}  // namespace mervane
