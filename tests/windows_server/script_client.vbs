' A script as a client. It prints what it sees, and "end of script" when it has come to its end: the script host of Wine says
' nothing of a failure.
Option Explicit
Dim classifier, rows, i, number, text, origin, word, off, before, here

Set classifier = CreateObject("MervaneClass3.Classifier3")
WScript.Echo "clusters", classifier.Clusters, "convex", classifier.UseConvexCombination, "function", classifier.ActivationFunction

classifier.Clusters = 2
classifier.ActivationFunction = 4
classifier.AutoScaleInputs = False
classifier.CellInputs = "Sheet1!B2:C10"
WScript.Echo "set", classifier.Clusters, classifier.ActivationFunction, classifier.AutoScaleInputs, classifier.CellInputs

word = "Sheet1!B2:C10" : number = 2 : off = True
classifier.CellInputs = word
classifier.CellOutputs = word
classifier.ActivationFunction = number
classifier.AutoScaleInputs = off
classifier.Clusters = number
Hand classifier, "Sheet1!E2"
WScript.Echo "variables", classifier.ActivationFunction, classifier.AutoScaleInputs, classifier.CellInputs, classifier.CellOutputs

On Error Resume Next
classifier.LearningRate = 1
number = Err.Number : text = Err.Description : origin = Err.Source
Err.Clear
WScript.Echo "refused", number, text, origin
classifier.NoSuchMember
number = Err.Number
Err.Clear
WScript.Echo "unknown", number
On Error GoTo 0
WScript.Echo "rate", classifier.LearningRate * 2

ReDim rows(5, 1)
For i = 0 To 5
  rows(i, 0) = i * 10
  rows(i, 1) = CStr(i Mod 2)
Next
classifier.Inputs = rows
WScript.Echo "rows", classifier.GetSamplesCount, "columns", classifier.GetColumnsCount, "largest", classifier.getMaxValue(0)
classifier.Run
WScript.Echo "outputs", VarType(classifier.Outputs)
before = 0
For i = 0 To 5
  here = classifier.Outputs(i)
  If here < 1 Or here > 2 Then before = before + 1
Next
WScript.Echo "strange clusters", before, VarType(here), classifier.Outputs(0) <> classifier.Outputs(5)
WScript.Echo "scaled", classifier.ScaleValue(5, 0, 10, 0, 100)
classifier.UnloadfrmMain
WScript.Echo "end of script"

Sub Hand(ByRef receiver, ByRef reference)
  receiver.CellOutputs = reference
End Sub
