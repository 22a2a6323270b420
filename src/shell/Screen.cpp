#include "shell/Screen.h"

namespace dravik {

Screen::Screen() {
    numeric.cboDisplay.setListIndex(kDisplayCommitted);
    sbr.add("Message", "", 3000, true);
    sbr.add("LastInclude", "", 1800).setToolTip("Last text included");

    font.fraFont.setLayout(column({
        row({item(font.lblFontName), item(font.lblSelectedFont).stretched(),
             item(font.lblFontDateTime).stretched(2), item(font.cmdSelectFont)}),
        row({item(font.LabelCharSet), item(font.txtCharSet).stretched()}),
    }));
    font.lblSelectedFont.setUsesMnemonic(false);
    font.lblSelectedFont.setBold(true);

    sample.fraSample.setLayout(column({
        item(sample.txtSampleInput),
        row({item(sample.chkCase), space(), item(sample.cmdInclude)}),
    }));

    train.fraTrain.setLayout(column({
        row({item(train.cmdTrain), item(train.cmdStop), item(train.cmdSaveFont), item(train.cmdRevert),
             space()}),
        row({item(train.lblTimeout), item(train.cboTimeout), item(train.prgTrain).stretched()}),
        item(train.lblStatus),
    }));

    overview.fraChar.setLayout(overview.arrangement());

    fraControls.setLayout(row({item(cmdTest), item(grid2).stretched()}));
    fraControls.setVisible(false);

    form.setLayout(column({
        item(font.fraFont),
        row({item(sample.fraSample).stretched(2), item(train.fraTrain).stretched(3)}),
        item(overview.tlbChars),
        item(overview.fraChar).stretched(),
        row({item(numeric.lblCharData), space(), item(numeric.lblDisplay), item(numeric.cboDisplay)}),
        item(numeric.grid).stretched(),
        item(fraControls),
        item(sbr),
    }));
    form.timers = {&train.tmrTrain};
    form.defaultButton = &sample.cmdInclude;
    form.resizable = true;

    font.cmdSelectFont.setToolTip("Choose, make, rename, duplicate or delete a font");
    font.txtCharSet.setToolTip("The characters that the font is to know");
    sample.txtSampleInput.setToolTip("Type the characters printed on the part, then Include");
    sample.chkCase.setToolTip("Type in any case: the text follows the case of the font's characters");
    sample.cmdInclude.setToolTip("Add the characters of the current image to the font's samples");
    train.cmdTrain.setToolTip("Train the font from its samples");
    train.cmdStop.setToolTip("Stop the training run");
    train.cmdSaveFont.setToolTip("Keep the result of the training");
    train.cmdRevert.setToolTip("Go back to the last saved training");
    train.cboTimeout.setToolTip("Time limit of a training run");
    overview.tlbChars.button("Graphical").setToolTip("Show the characters as cells");
    overview.tlbChars.button("Numeric").setToolTip("Show the samples as a table");
    overview.tlbChars.button("Histogram").setToolTip("Histograms are in the right-click menu of a character");
    overview.tlbChars.button("Array").setToolTip("Show the feature array of the font's first character");
    overview.tlbChars.button("Undo").setToolTip("Nothing to undo");
    overview.tlbChars.button("Undo").setEnabled(false);
    overview.tlbChars.button("Log").setToolTip("Write every step to the trace log");
    train.prgTrain.setAccessibleName("Training progress");
    numeric.grid.setAccessibleName("Samples");
}

}  // namespace dravik
