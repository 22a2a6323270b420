' cscript bind-tool.vbs
' A font tool written in VBScript, bound to the control as the step to edit.
Option Explicit

Class Tool
    Private committed

    Public Property Get ProgId()
        ProgId = "Step.DravikTool.1"
    End Property
    Public Property Get Datum(name)
        If name <> "SelFont" Then Err.Raise 5, "Tool", "There is no datum " & name
        Datum = 1 ' bit 0: the first font of the list
    End Property
    Public Function GetFontList()
        GetFontList = Array("labels")
    End Function
    Public Sub LoadFont(name)
        If name <> "labels" Then Err.Raise 53, "Tool", "There is no font " & name
        committed = Array("A", "B", "A")
    End Sub
    Public Function GetCharacterSet()
        GetCharacterSet = Array("A", "B")
    End Function
    Public Function GetTrainTimeout()
        GetTrainTimeout = 60
    End Function
    Public Function GetSampleData(selectors, fields)
        Dim table, row, column
        If selectors(LBound(selectors)) <> 399999 Then Exit Function ' Empty: no record matches
        ReDim table(UBound(committed) + 1, 53)
        For column = 0 To 53
            table(0, column) = "Heading"
        Next
        For row = 1 To UBound(table)
            table(row, 0) = 300000 + row - 1
            table(row, 1) = Asc(committed(row - 1))
            table(row, 2) = row / 10 ' Distance
            For column = 3 To 53
                table(row, column) = 0.5
            Next
        Next
        GetSampleData = table
    End Function
    ' ... and so on for the other operations; one that is missing fails with error 438 where it is first called.
End Class

Class OtherStep
    Public Property Get ProgId()
        ProgId = "Step.Other.1"
    End Property
End Class

Dim control
Set control = CreateObject("DravikDlgLib.DravikDlg")

On Error Resume Next
Set control.Step = New OtherStep
WScript.Echo "&H" & Hex(Err.Number) & " " & Err.Source & ": " & Err.Description
Err.Clear
On Error GoTo 0

control.ReadOnly = False
Set control.Step = New Tool
WScript.Echo "Bound to " & control.Step.ProgId
WScript.Echo control.FontTrainDate("labels")
control.HighlightIncluded "AB"
