Attribute VB_Name = "MervaneClustering"
Option Explicit

' Shows the options dialog of Mervane for the active workbook. Import this module and run ClusterRows;
' MervaneCls31.dll has to be registered in the width of this application.

Public Sub ClusterRows()
    Dim classifier As Object
    Dim answer As String

    Set classifier = CreateObject("MervaneClass3.Classifier3")
    On Error GoTo Leave
    Set classifier.ExcelApplication = Application
    If TypeName(Selection) = "Range" Then
        If Selection.Cells.Count > 1 Then classifier.CellInputs = ReferenceOf(Selection)
    End If

    ' The dialog comes back after each pick and after data that it refused; it keeps what was entered.
    Do
        answer = classifier.ShowMainForm
        Select Case answer
            Case "INPUTS"
                classifier.CellInputs = Picked("Select the rows of numbers to cluster:", classifier.CellInputs)
            Case "OUTPUTS"
                classifier.CellOutputs = Picked("Select the first cell of the results:", classifier.CellOutputs)
        End Select
    Loop Until answer = "CLOSE"

Leave:
    If Err.Number <> 0 Then MsgBox Err.Description, vbExclamation, "Mervane"
    ' The classifier and its dialog hold each other until this.
    classifier.UnloadfrmMain
    ' A clustering that was broken off leaves the updating of the screen off.
    Application.ScreenUpdating = True
End Sub

' What the user picks, or the text of before where the user cancels.
Private Function Picked(ByVal question As String, ByVal before As String) As String
    Const rangeWanted As Long = 8
    Dim area As Range

    Picked = before
    On Error Resume Next
    Set area = Application.InputBox(Prompt:=question, Title:="Mervane", Default:=before, Type:=rangeWanted)
    On Error GoTo 0
    If Not area Is Nothing Then Picked = ReferenceOf(area)
End Function

' Such as Sheet1!$B$2:$E$151, with the name of the sheet in quotes where it needs them.
Private Function ReferenceOf(ByVal area As Range) As String
    Dim sheetName As String

    sheetName = area.Worksheet.Name
    If sheetName Like "*[!A-Za-z0-9_]*" Or sheetName Like "[0-9]*" Then
        sheetName = "'" & Replace(sheetName, "'", "''") & "'"
    End If
    ReferenceOf = sheetName & "!" & area.Address(ReferenceStyle:=Application.ReferenceStyle)
End Function
