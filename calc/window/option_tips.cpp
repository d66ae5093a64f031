#include "calc/window/option_tips.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "calc/texts.h"
#include "dialog/entry_rules.h"
#include "mervane/convert.h"
#include "support/globals.h"

namespace mervane::addin {

namespace {

struct Tip {
  std::string_view key;
  Text text;
};

constexpr Tip tips[] = {
    {"INPUTS",
     {"The range with the numbers, one row for each sample, such as Sheet1!B2:E151 or $Sheet1.$B$2:$E$151",
      "Der Bereich mit den Zahlen, eine Zeile für jedes Beispiel, etwa Tabelle1!B2:E151 oder $Tabelle1.$B$2:$E$151"}},
    {"OUTPUTS",
     {"The first cell of the results, such as Sheet1!G2; their heading comes into the row above",
      "Die erste Zelle der Ergebnisse, etwa Tabelle1!G2; ihre Überschrift kommt in die Zeile darüber"}},
    {"CLUSTERS",
     {"How many groups are made: a whole number from %1 to %2, at most as many as there are rows",
      "Wie viele Gruppen gebildet werden: eine ganze Zahl von %1 bis %2, höchstens so viele, wie es Zeilen gibt"}},
    {"LEARNINGRATE",
     {"How much the network takes from each row at the start: a number above %1 and below %2",
      "Wie viel das Netz am Anfang aus jeder Zeile lernt: eine Zahl über %1 und unter %2"}},
    {"EPOCHS",
     {"How often all rows are shown to the network: a whole number from %1 to %2",
      "Wie oft alle Zeilen dem Netz gezeigt werden: eine ganze Zahl von %1 bis %2"}},
    {"INITIALWEIGHTS",
     {"A number above %1 and below %2; it is remembered, and no run depends on it",
      "Eine Zahl über %1 und unter %2; sie wird gemerkt, und kein Ergebnis hängt von ihr ab"}},
    {"STARTLEARNINGRADIUS",
     {"How many neighbouring clusters learn along at the start: a whole number from %1 to %2",
      "Wie viele benachbarte Gruppen am Anfang mitlernen: eine ganze Zahl von %1 bis %2"}},
    {"ACTIVATIONFUNCTION",
     {"The function that the network's outputs pass through", "Die Funktion, durch die die Ausgaben des Netzes gehen"}},
    {"USECONVEX",
     {"The rows come to their own values step by step in the course of the training",
      "Die Zeilen kommen erst im Lauf des Lernens zu ihren eigenen Werten"}},
    {"SCALEVALUES",
     {"Every column counts alike, however large its numbers are",
      "Alle Spalten zählen gleich viel, wie groß ihre Zahlen auch sind"}},
    {"DEFAULTS",
     {"Gives the network parameters the values that they began with",
      "Gibt den Parametern des Netzes ihre anfänglichen Werte"}},
    {"SPLITMULTIPLE", {"The listing has a column for each cluster", "Die Liste hat eine Spalte für jede Gruppe"}},
    {"SPLITONE",
     {"The listing is one column with the number of each row's cluster",
      "Die Liste ist eine Spalte mit der Nummer der Gruppe jeder Zeile"}},
    {"AUTOFILTER",
     {"Arrows to filter by, in the headings of the table", "Pfeile zum Filtern in den Überschriften der Tabelle"}},
    {"DRAWCHARTS",
     {"Two charts beside the listing, of the clusters' profiles and weights",
      "Zwei Diagramme neben der Liste, mit Profilen und Gewichten der Gruppen"}},
    {"AVERAGES",
     {"Below the numbers, a row for each cluster with the averages of its columns",
      "Unter den Zahlen für jede Gruppe eine Zeile mit den Mittelwerten ihrer Spalten"}},
    {"WEIGHTEDAVERAGES",
     {"Below the numbers, a row for each cluster with its weighted averages in percent",
      "Unter den Zahlen für jede Gruppe eine Zeile mit ihren gewichteten Mittelwerten in Prozent"}},
    {"MINIMUMS",
     {"Below the numbers, a row for each cluster with the least value of each column",
      "Unter den Zahlen für jede Gruppe eine Zeile mit dem kleinsten Wert jeder Spalte"}},
    {"MAXIMUMS",
     {"Below the numbers, a row for each cluster with the greatest value of each column",
      "Unter den Zahlen für jede Gruppe eine Zeile mit dem größten Wert jeder Spalte"}},
    {"CLUSTERWEIGHTS",
     {"Below the numbers, each cluster's share of the rows", "Unter den Zahlen der Anteil jeder Gruppe an den Zeilen"}},
    {"SETCOLORS",
     {"Rows and statistics get the colour of their cluster", "Zeilen und Statistik bekommen die Farbe ihrer Gruppe"}},
    {"SORTCLUSTERS",
     {"The rows are put in the order of their clusters; cells left of the numbers move with them, cells right do not",
      "Die Zeilen werden nach Gruppen geordnet; Zellen links der Zahlen gehen mit, Zellen rechts davon nicht"}},
    {"TABLETORANGE", {"It is remembered, and no run depends on it", "Wird gemerkt; kein Ergebnis hängt davon ab"}},
};

/// A limit as a user writes it: toText would give a small fraction an exponent.
std::string limitText(const dialog::EntryRule& rule, double limit) {
  if (rule.number == dialog::EntryRule::Number::integer) return toText(Variant(limit), globals::locale());
  constexpr int places = 5;
  std::string digits = std::to_string(std::lround(limit * std::pow(10.0, places)));
  digits.insert(0, places - std::min<std::size_t>(digits.size(), places), '0');
  return "0" + globals::locale().decimalSeparator + digits;
}

/// Of whole numbers the limits are taken themselves, of others they are not.
std::vector<std::string> limitsOf(std::string_view key) {
  for (const dialog::EntryRule& rule : dialog::entryRules) {
    if (key != rule.key) continue;
    const double inside = rule.number == dialog::EntryRule::Number::integer ? 1.0 : 0.0;
    return {limitText(rule, rule.minValue + inside), limitText(rule, rule.maxValue - inside)};
  }
  return {};
}

}  // namespace

std::string optionTip(const std::string& key) {
  const auto* const tip = std::ranges::find(tips, std::string_view(key), &Tip::key);
  return tip == std::end(tips) ? std::string() : said(tip->text, limitsOf(key));
}

}  // namespace mervane::addin
