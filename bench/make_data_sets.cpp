// Writes the made data sets of examples/data, always the same ones.
//
//   mervane_make_data_sets FOLDER
//
// The numbers come from a generator of our own, so that the files do not depend on a library's idea of chance.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using Row = std::vector<double>;

/// A linear congruential generator of 64 bits; the upper bits are used.
class Chance {
 public:
  explicit Chance(std::uint64_t seed) : state_(seed * 2862933555777941757ULL + 3037000493ULL) {}

  /// 0 <= result < 1.
  double uniform() {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state_ >> 11) / 9007199254740992.0;
  }
  double between(double low, double high) { return low + (high - low) * uniform(); }
  /// About normal, mean 0 and deviation 1: the sum of twelve uniform numbers.
  double bell() {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) sum += uniform();
    return sum;
  }
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(uniform() * static_cast<double>(count)); }
  void shuffle(std::vector<Row>& rows) {
    for (std::size_t i = rows.size(); i > 1; --i) std::swap(rows[i - 1], rows[below(i)]);
  }

 private:
  std::uint64_t state_;
};

Row around(Chance& chance, const Row& centre, double deviation) {
  Row row = centre;
  for (double& value : row) value += deviation * chance.bell();
  return row;
}

std::vector<Row> centres(Chance& chance, int count, std::size_t columns, double low, double high) {
  std::vector<Row> rows(static_cast<std::size_t>(count), Row(columns));
  for (Row& row : rows)
    for (double& value : row) value = chance.between(low, high);
  return rows;
}

/// Seven round groups in the plane, rows shuffled.
std::vector<Row> blobs() {
  Chance chance(1);
  std::vector<Row> rows;
  for (const Row& centre : centres(chance, 7, 2, 0, 100))
    for (int i = 0; i < 60; ++i) rows.push_back(around(chance, centre, 5));
  chance.shuffle(rows);
  return rows;
}

/// Two rings, one inside the other.
std::vector<Row> rings() {
  Chance chance(2);
  std::vector<Row> rows;
  for (int i = 0; i < 300; ++i) {
    const double angle = chance.between(0, 6.283185307179586);
    const double radius = (i % 2 == 0 ? 3.0 : 8.0) + 0.4 * chance.bell();
    rows.push_back({radius * std::cos(angle), radius * std::sin(angle)});
  }
  return rows;
}

/// Columns whose sizes differ by twelve powers of ten.
std::vector<Row> illScaled() {
  Chance chance(3);
  std::vector<Row> rows;
  for (const Row& centre : centres(chance, 5, 4, 0, 10))
    for (int i = 0; i < 50; ++i) {
      Row row = around(chance, centre, 0.8);
      row[0] *= 1e-6;
      row[1] = row[1] * 1e6 + 1e9;
      row[2] *= 1e-2;
      rows.push_back(row);
    }
  chance.shuffle(rows);
  return rows;
}

/// Four groups and five rows far away from all of them.
std::vector<Row> outliers() {
  Chance chance(4);
  std::vector<Row> rows;
  for (const Row& centre : centres(chance, 4, 2, 0, 20))
    for (int i = 0; i < 50; ++i) rows.push_back(around(chance, centre, 1));
  for (int i = 0; i < 5; ++i) rows.push_back({chance.between(60, 200), chance.between(-200, -60)});
  chance.shuffle(rows);
  return rows;
}

/// Twelve places, each of them many times, some much oftener than others.
std::vector<Row> duplicates() {
  Chance chance(5);
  const std::vector<Row> places = centres(chance, 12, 3, 0, 10);
  std::vector<Row> rows;
  for (std::size_t place = 0; place < places.size(); ++place)
    for (std::size_t i = 0; i < 5 + 3 * place; ++i) rows.push_back(places[place]);
  chance.shuffle(rows);
  return rows;
}

/// One column with a long tail.
std::vector<Row> oneColumn() {
  Chance chance(6);
  std::vector<Row> rows;
  for (int i = 0; i < 200; ++i) {
    const double value = chance.uniform();
    rows.push_back({10 * value * value + chance.uniform()});
  }
  return rows;
}

/// Six groups, the rows of each together.
std::vector<Row> sortedClasses() {
  Chance chance(7);
  std::vector<Row> rows;
  for (const Row& centre : centres(chance, 6, 3, 0, 50))
    for (int i = 0; i < 70; ++i) rows.push_back(around(chance, centre, 4));
  return rows;
}

/// One group of 800 rows beside five small ones.
std::vector<Row> unbalanced() {
  Chance chance(8);
  std::vector<Row> rows;
  int size = 800;
  for (const Row& centre : centres(chance, 6, 2, 0, 60)) {
    for (int i = 0; i < size; ++i) rows.push_back(around(chance, centre, size == 800 ? 6 : 2));
    size = 40;
  }
  chance.shuffle(rows);
  return rows;
}

/// Two half moons that reach into each other.
std::vector<Row> moons() {
  Chance chance(9);
  std::vector<Row> rows;
  for (int i = 0; i < 300; ++i) {
    const double angle = chance.between(0, 3.141592653589793);
    const bool upper = i % 2 == 0;
    rows.push_back({(upper ? std::cos(angle) : 1 - std::cos(angle)) + 0.08 * chance.bell(),
                    (upper ? std::sin(angle) : 0.5 - std::sin(angle)) + 0.08 * chance.bell()});
  }
  return rows;
}

/// Three long thin groups that lie aslant.
std::vector<Row> elongated() {
  Chance chance(10);
  std::vector<Row> rows;
  for (int group = 0; group < 3; ++group)
    for (int i = 0; i < 100; ++i) {
      const double along = 10 * chance.bell();
      rows.push_back({along + 2 * chance.bell(), 0.6 * along + 15 * group + 2 * chance.bell()});
    }
  return rows;
}

/// Eight groups in 32 columns.
std::vector<Row> wide() {
  Chance chance(11);
  std::vector<Row> rows;
  for (const Row& centre : centres(chance, 8, 32, 0, 10))
    for (int i = 0; i < 30; ++i) rows.push_back(around(chance, centre, 2.5));
  chance.shuffle(rows);
  return rows;
}

/// A square without any groups.
std::vector<Row> uniformSquare() {
  Chance chance(12);
  std::vector<Row> rows;
  for (int i = 0; i < 500; ++i) rows.push_back({chance.uniform(), chance.uniform()});
  return rows;
}

/// Six rows: fewer than the clusters that are asked for.
std::vector<Row> fewRows() {
  return {{1, 2, 9}, {2, 1, 8}, {8, 9, 1}, {9, 8, 2}, {5, 5, 5}, {1, 9, 5}};
}

/// Groups of quite unlike spread, rows of each together.
std::vector<Row> unlikeSpreads() {
  Chance chance(13);
  std::vector<Row> rows;
  double deviation = 0.5;
  for (const Row& centre : centres(chance, 5, 5, 0, 30)) {
    for (int i = 0; i < 60; ++i) rows.push_back(around(chance, centre, deviation));
    deviation *= 1.8;
  }
  return rows;
}

void write(const std::filesystem::path& file, const std::vector<Row>& rows) {
  std::ofstream out(file, std::ios::binary);
  for (std::size_t column = 0; column < rows.front().size(); ++column)
    out << (column == 0 ? "" : ",") << 'x' << column + 1;
  out << '\n';
  for (const Row& row : rows) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      char text[40];
      std::snprintf(text, sizeof text, "%.5g", row[column]);
      out << (column == 0 ? "" : ",") << text;
    }
    out << '\n';
  }
  if (!out) throw std::ios_base::failure("cannot write " + file.string());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: mervane_make_data_sets FOLDER\n";
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    write(folder / "blobs.csv", blobs());
    write(folder / "rings.csv", rings());
    write(folder / "ill_scaled.csv", illScaled());
    write(folder / "outliers.csv", outliers());
    write(folder / "duplicates.csv", duplicates());
    write(folder / "one_column.csv", oneColumn());
    write(folder / "sorted_classes.csv", sortedClasses());
    write(folder / "unbalanced.csv", unbalanced());
    write(folder / "moons.csv", moons());
    write(folder / "elongated.csv", elongated());
    write(folder / "wide.csv", wide());
    write(folder / "uniform_square.csv", uniformSquare());
    write(folder / "few_rows.csv", fewRows());
    write(folder / "unlike_spreads.csv", unlikeSpreads());
  } catch (const std::exception& failure) {
    std::cerr << "mervane_make_data_sets: " << failure.what() << '\n';
    return 3;
  }
}
