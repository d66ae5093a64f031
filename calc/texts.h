#pragma once

#include <string>
#include <vector>

/// What the add-in itself says, in the languages that it speaks. The texts of the component, its captions and its
/// messages, are fixed and stand here no more than the sentences that all hosts share.
///
/// For a further language give `Text` one more member; the compiler then asks for it in each text, here and in
/// `option_tips.cpp`.
namespace mervane::addin {

struct Text {
  const char* english;
  const char* german;
};

/// The languages of the members of `Text`.
enum class Language { english, german };

/// The language for a locale such as "de-AT"; English where it is none of ours.
[[nodiscard]] Language languageOf(const std::string& locale);
/// The language to speak from now on, on the main thread.
void speak(Language language);
[[nodiscard]] Language spokenLanguage();

/// The text in the spoken language, with "%1", "%2" and so on replaced by the parts.
[[nodiscard]] std::string said(const Text& text, const std::vector<std::string>& parts = {});

namespace text {

inline constexpr Text alreadyOpen{"A clustering is already open. Finish it or close its dialog first.",
                                  "Es ist schon ein Fenster zum Gruppieren offen. Beenden Sie das zuerst."};
inline constexpr Text noDocument{"There is no document to cluster in.", "Es ist kein Dokument offen."};
inline constexpr Text documentClosed{"The document was closed.", "Das Dokument wurde geschlossen."};
inline constexpr Text forReadingOnly{
    "This document is open for reading only. Switch Edit > Edit Mode on, or save it by another name.",
    "Dieses Dokument ist nur zum Lesen offen. Schalten Sie Bearbeiten > Bearbeitungsmodus ein, oder speichern Sie es "
    "unter "
    "einem anderen Namen."};
inline constexpr Text refusedWithoutReason{"LibreOffice refused a step without saying why.",
                                           "LibreOffice hat einen Schritt verweigert und sagt nicht, weshalb."};
inline constexpr Text isClustering{"Mervane is clustering in this document.", "Mervane arbeitet in diesem Dokument."};

inline constexpr Text notLookedAt{
    "What the run would remove or overwrite could not be found out. Save the document first.",
    "Es ließ sich nicht feststellen, was das Gruppieren entfernen oder überschreiben würde. Speichern Sie das Dokument "
    "vorher."};
inline constexpr Text notAllowed{"The sheet does not allow that run:", "Das Blatt lässt das nicht zu:"};
inline constexpr Text wouldGo{"It would go %1.", "Es ginge %1."};
inline constexpr Text chooseOthers{"Choose other cells, or change the sheet first.",
                                   "Wählen Sie andere Zellen, oder ändern Sie zuerst das Blatt."};
inline constexpr Text wouldRemove{"The run would remove or overwrite what is there:",
                                  "Das Gruppieren würde entfernen oder überschreiben, was da steht:"};
inline constexpr Text wouldHarmNothing{"It would harm nothing %1.", "Nichts ginge verloren %1."};
inline constexpr Text wouldTear{"The run would tear rows apart:", "Das Gruppieren würde Zeilen auseinanderreißen:"};
inline constexpr Text wouldNotTear{"It would not without %1.", "Ohne %1 geschieht das nicht."};
inline constexpr Text tornColumn{
    "sorting would leave the cells of column %1, right of the inputs, where they are, so that they no longer stand "
    "beside their rows",
    "die Zellen der Spalte %1 rechts der Eingaben blieben beim Sortieren stehen und stünden nicht mehr neben ihren "
    "Zeilen"};
inline constexpr Text tornColumns{
    "sorting would leave the cells of columns %1, right of the inputs, where they are, so that they no longer stand "
    "beside their rows",
    "die Zellen der Spalten %1 rechts der Eingaben blieben beim Sortieren stehen und stünden nicht mehr neben ihren "
    "Zeilen"};
inline constexpr Text withOutputs{"with Outputs %1", "mit Outputs %1"};
inline constexpr Text withSwitch{"with %1", "mit %1"};
inline constexpr Text withoutSwitch{"without %1", "ohne %1"};
inline constexpr Text goOn{"Clusterize all the same?", "Trotzdem gruppieren?"};
inline constexpr Text giveOverwrite{"Give the option Overwrite with true to let it go.",
                                    "Mit der Option Overwrite und dem Wert True wird es dennoch getan."};

inline constexpr Text undoneByHalf{
    "The undo or redo stopped half way, so that the sheets hold some cells of before and some of after. Close the "
    "document without saving it and open it again, or save it by another name. Where a sheet is protected, unprotect "
    "it "
    "before the next undo.",
    "Rückgängigmachen oder Wiederherstellen ist auf halbem Weg stehen geblieben; auf den Blättern steht teils der "
    "Stand "
    "davor, teils der danach. Schließen Sie das Dokument ohne zu speichern und öffnen Sie es neu, oder speichern Sie "
    "es "
    "unter einem anderen Namen. Ist ein Blatt geschützt, heben Sie den Schutz vor dem nächsten Mal auf."};

inline constexpr Text pickInputs{"Mervane: pick the numbers, then Enter", "Mervane: Zahlen auswählen, dann Eingabe"};
inline constexpr Text pickOutputs{"Mervane: pick the first cell of results", "Mervane: erste Zelle der Ergebnisse"};
inline constexpr Text pickedElsewhere{
    "%1 was picked in another document. Pick a range of the one that Mervane was opened in.",
    "%1 wurde in einem anderen Dokument ausgewählt. Wählen Sie einen Bereich des Dokuments, in dem Mervane geöffnet "
    "wurde."};

inline constexpr Text running{"Clustering; press Escape to stop with what has been learnt by then.",
                              "Mervane rechnet; Esc beendet das Lernen mit dem bis dahin Gelernten."};
inline constexpr Text stopped{"Stopped by Escape; the results are partial, from what has been learnt so far.",
                              "Mit Esc beendet; die Ergebnisse sind vorläufig, aus dem bisher Gelernten."};
inline constexpr Text writing{"Clustering; writing the results.", "Mervane schreibt die Ergebnisse."};

inline constexpr Text refusedEntry{"%1: \"%2\" is not taken. %3.", "%1: „%2“ wird nicht angenommen. %3."};
inline constexpr Text groupIsOpen{"Open. Press to close this group.", "Offen. Drücken schließt diese Gruppe."};
inline constexpr Text groupIsClosed{"Closed. Press to open this group.", "Geschlossen. Drücken öffnet diese Gruppe."};
inline constexpr Text pickOnTheSheet{"Pick the range of %1 on the sheet", "Den Bereich von %1 auf dem Blatt auswählen"};
inline constexpr Text failureReport{"The failure report; it can be selected and copied",
                                    "Der Fehlerbericht; er lässt sich markieren und kopieren"};

inline constexpr Text help{"Help", "Hilfe"};
inline constexpr Text helpTip{"Opens the page about this dialog in your browser; so does F1",
                              "Öffnet die Seite zu diesem Fenster im Browser, wie F1"};
inline constexpr Text helpIsNotShown{"No browser could be started. The page is this file: %1",
                                     "Es ließ sich kein Browser starten. Die Seite ist diese Datei: %1"};

}  // namespace text
}  // namespace mervane::addin
