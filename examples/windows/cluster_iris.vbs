' Opens a workbook in a spreadsheet application, lets the user cluster it in the options dialog, and saves the result.
'
' cscript cluster_iris.vbs WORKBOOK RESULT [APPLICATION]
'   WORKBOOK     whole path of the workbook
'   RESULT       whole path of the file to save
'   APPLICATION  name of the application's class (default Excel.Application)
Option Explicit

Dim applicationName, application, book, classifier, answer
If WScript.Arguments.Count < 2 Then
  WScript.Echo "usage: cscript cluster_iris.vbs WORKBOOK RESULT [APPLICATION]"
  WScript.Quit 2
End If
applicationName = "Excel.Application"
If WScript.Arguments.Count > 2 Then applicationName = WScript.Arguments(2)

Set application = CreateObject(applicationName)
Set book = application.Workbooks.Open(WScript.Arguments(0))
Set classifier = CreateObject("MervaneClass3.Classifier3")
Set classifier.ExcelApplication = application
classifier.CellInputs = "Iris!B2:E151"
classifier.CellOutputs = "Iris!G2"

Do
  answer = classifier.ShowMainForm
  WScript.Echo answer
  ' A script has no way to let the user pick cells, so it asks for their reference.
  If answer = "INPUTS" Then classifier.CellInputs = InputBox("The rows to cluster:", "Mervane", classifier.CellInputs)
  If answer = "OUTPUTS" Then classifier.CellOutputs = InputBox("The first cell of the results:", "Mervane", classifier.CellOutputs)
Loop Until answer = "CLOSE"

' The classifier and its dialog hold each other until this.
classifier.UnloadfrmMain
book.SaveAs WScript.Arguments(1)
book.Close
WScript.Echo "saved"
