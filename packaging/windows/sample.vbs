' Clusters four rows of an array, without a spreadsheet. Run it with the script host of the package's width:
'   cscript sample.vbs
' The cluster numbers are an array of 32-bit integers, which this language cannot index as a whole; it asks for one row's
' at a time.
Option Explicit

Dim classifier, rows(3, 1)
rows(0, 0) = 1.0 : rows(0, 1) = 20
rows(1, 0) = 1.5 : rows(1, 1) = 22
rows(2, 0) = 8.0 : rows(2, 1) = 70
rows(3, 0) = 9.5 : rows(3, 1) = 75

Set classifier = CreateObject("MervaneClass3.Classifier3")
classifier.Clusters = 2
classifier.EpochCount = 50
classifier.Inputs = rows
WScript.Echo "rows: " & classifier.GetSamplesCount & ", columns: " & classifier.GetColumnsCount
WScript.Echo "first column: " & classifier.getMinValue(0) & " to " & classifier.getMaxValue(0)
classifier.Run
WScript.Echo "together: " & (classifier.Outputs(0) = classifier.Outputs(1)) & ", apart: " & (classifier.Outputs(1) <> classifier.Outputs(2))

' A wrong value is refused with a number, a description and a source.
On Error Resume Next
classifier.LearningRate = 2
WScript.Echo "refused: " & Hex(Err.Number) & " " & Err.Description
On Error GoTo 0

classifier.UnloadfrmMain
WScript.Echo "done"
