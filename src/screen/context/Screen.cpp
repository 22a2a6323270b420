#include "screen/context/Screen.h"

namespace dravik::screen {

Screen::Screen() {
    numeric.cboDisplay.setListIndex(kDisplayCommitted);
    sbr.add("Message", "", 3000, true);
    sbr.add("LastInclude", "", 1800).setToolTip("Last text included");

    font.fraFont.setLayout(ui::column({
        ui::row({ui::item(font.lblFontName), ui::item(font.lblSelectedFont).stretched(),
                 ui::item(font.lblFontDateTime).stretched(2), ui::item(font.cmdSelectFont)}),
        ui::row({ui::item(font.LabelCharSet), ui::item(font.txtCharSet).stretched()}),
    }));
    font.lblSelectedFont.setUsesMnemonic(false);
    font.lblSelectedFont.setBold(true);

    sample.fraSample.setLayout(ui::column({
        ui::item(sample.txtSampleInput),
        ui::row({ui::item(sample.chkCase), ui::space(), ui::item(sample.cmdInclude)}),
    }));

    train.fraTrain.setLayout(ui::column({
        ui::row({ui::item(train.cmdTrain), ui::item(train.cmdStop), ui::item(train.cmdSaveFont),
                 ui::item(train.cmdRevert), ui::space()}),
        ui::row(
            {ui::item(train.lblTimeout), ui::item(train.cboTimeout), ui::item(train.prgTrain).stretched()}),
        ui::item(train.lblStatus),
    }));

    overview.fraChar.setLayout(overview.arrangement());

    fraControls.setLayout(ui::row({ui::item(cmdTest), ui::item(grid2).stretched()}));
    fraControls.setVisible(false);

    form.setLayout(ui::column({
        ui::item(font.fraFont),
        ui::row({ui::item(sample.fraSample).stretched(2), ui::item(train.fraTrain).stretched(3)}),
        ui::item(overview.tlbChars),
        ui::item(overview.fraChar).stretched(),
        ui::row({ui::item(numeric.lblCharData), ui::space(), ui::item(numeric.lblDisplay),
                 ui::item(numeric.cboDisplay)}),
        ui::item(numeric.grid).stretched(),
        ui::item(fraControls),
        ui::item(sbr),
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

}  // namespace dravik::screen
