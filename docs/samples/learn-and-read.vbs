' cscript learn-and-read.vbs JOBSFOLDER FONT IMAGE TEXT IMAGE2
' Trains a font with the characters of an image, saves it and prints what it reads in another image. TEXT is what
' the image shows, without blanks and line breaks: each of its characters labels one that is found.
Option Explicit
Dim arguments, tool, found
Set arguments = WScript.Arguments
Set tool = CreateObject("Dravik.EmbeddedStep")
tool.JobsFolder = arguments(0)
tool.CreateFont arguments(1)
tool.OpenImage arguments(2)
tool.IncludeSamples arguments(3)
found = 0
If Not IsEmpty(tool.GetUncommittedSamples()) Then found = UBound(tool.GetUncommittedSamples(), 1) + 1
If found <> Len(arguments(3)) Then
    WScript.Echo found & " characters found, " & Len(arguments(3)) & " typed"
    WScript.Quit 1
End If
tool.CommitNewSamples

tool.SetTrainTimeout 10
tool.StartTraining
Do Until tool.IsTrainingDone()
Loop
tool.SaveFont arguments(1)

tool.OpenImage arguments(4)
WScript.Echo tool.ReadImage()
