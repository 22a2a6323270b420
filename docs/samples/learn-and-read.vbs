' cscript learn-and-read.vbs JOBSFOLDER FONT IMAGE TEXT IMAGE2
' Trains a font with the characters of an image, saves it and prints what it reads in another image.
Option Explicit
Dim arguments, tool
Set arguments = WScript.Arguments
Set tool = CreateObject("Dravik.EmbeddedStep")
tool.JobsFolder = arguments(0)
tool.CreateFont arguments(1)
tool.OpenImage arguments(2)
tool.IncludeSamples arguments(3)
If Not IsEmpty(tool.GetUncommittedSamples()) Then tool.CommitNewSamples

tool.SetTrainTimeout 10
tool.StartTraining
Do Until tool.IsTrainingDone()
Loop
tool.SaveFont arguments(1)

tool.OpenImage arguments(4)
WScript.Echo tool.ReadImage()
