Attribute VB_Name = "MervaneClustering"
Option Explicit

' Shows the options dialog of Mervane for the active workbook. Import this module and run ClusterRows;
' MervaneCls31.dll has to be registered in the width of this application.

Public Sub ClusterRows()
    Const lettersAndNumbers As Long = 1
    Dim classifier As Object
    Dim notation As Long

    Set classifier = CreateObject("MervaneClass3.Classifier3")
    notation = Application.ReferenceStyle
    On Error GoTo Leave
    ' Columns may go by number here. The component would then read references as relative to the active cell, which moves
    ' with the next pick, so columns go by letter while the dialog is in use.
    Application.ReferenceStyle = lettersAndNumbers
    Set classifier.ExcelApplication = Application
    OfferSelection classifier
    ShowUntilClosed classifier

Leave:
    If Err.Number <> 0 Then MsgBox Err.Description, vbExclamation, "Mervane"
    On Error Resume Next
    Application.ReferenceStyle = notation
    ' A clustering that was broken off leaves the updating of the screen off.
    Application.ScreenUpdating = True
    ' The classifier and its dialog hold each other until this. Last, so that the application is itself again by then.
    classifier.UnloadfrmMain
End Sub

' The dialog comes back after each pick and after data that it refused; it keeps what was entered.
Private Sub ShowUntilClosed(ByVal classifier As Object)
    Dim answer As String
    Dim before As String

    Do
        answer = classifier.ShowMainForm
        Select Case answer
            Case "INPUTS"
                before = classifier.CellInputs
                classifier.CellInputs = Picked("Select the rows of numbers to cluster:", before)
            Case "OUTPUTS"
                before = classifier.CellOutputs
                classifier.CellOutputs = Picked("Select the first cell of the results:", before)
        End Select
    Loop Until answer = "CLOSE"
End Sub

' Rows that are selected are meant to be clustered; a single row, whole columns and a whole sheet are not.
Private Sub OfferSelection(ByVal classifier As Object)
    Const mostRows As Long = 65535
    Const mostColumns As Long = 702
    Dim area As Range

    Set area = Nothing
    ' A chart or a picture is no range.
    On Error Resume Next
    Set area = Application.Selection
    On Error GoTo 0
    If area Is Nothing Then Exit Sub
    ' Not counted by cells: a whole sheet has more than a Long holds.
    If area.Rows.Count < 2 Or area.Rows.Count > mostRows Or area.Columns.Count > mostColumns Then Exit Sub
    classifier.CellInputs = ReferenceOf(area)
End Sub

' What the user picks, or the text of before where the user cancels.
Private Function Picked(ByVal question As String, ByVal before As String) As String
    Const rangeWanted As Long = 8
    Dim area As Range

    Picked = before
    Set area = Nothing
    On Error Resume Next
    Set area = Application.InputBox(question, "Mervane", before, , , , , rangeWanted)
    On Error GoTo 0
    If Not area Is Nothing Then Picked = ReferenceOf(area)
End Function

' Such as 'Sheet1'!B2:E151. The component takes no dollar signs; a name of any kind may stand in quotes.
Private Function ReferenceOf(ByVal area As Range) As String
    ReferenceOf = "'" & Replace(area.Worksheet.Name, "'", "''") & "'!" & area.Areas(1).Address(False, False)
End Function
