// cscript list-samples.js JOBSFOLDER FONT
// Prints every committed sample of a font: its character and its Distance.
var tool = new ActiveXObject("Dravik.EmbeddedStep");
tool.JobsFolder = WScript.Arguments(0);
try {
    tool.LoadFont(WScript.Arguments(1));
} catch (error) {
    WScript.Echo("Error " + (error.number & 0xFFFF) + ": " + error.message);
    WScript.Quit(1);
}

var ALL_COMMITTED = 399999;
var records = tool.GetSampleData([ALL_COMMITTED], [1, 2, 3, 5, 6]);
if (records !== undefined) {
    var table = new VBArray(records);
    for (var row = 1; row <= table.ubound(1); ++row)
        WScript.Echo(String.fromCharCode(table.getItem(row, 1)) + " " + table.getItem(row, 2).toFixed(3));
}
