#include "support/Dialog.h"

#include "support/WindowEdges.h"

void fillDialog(ExtendDialog* dialog, QWidget* content)
{
    content->resize(content->sizeHint().expandedTo(content->minimumSize()));
    dialog->AddMainWidget(content);
    content->show();
    dialog->changeSize(content->size());
}

void makeResizable(ExtendDialog* dialog)
{
    if (!dialog->IsCusTitle())
        return;
    dialog->SetCentreOnResize(false); // the edge that is not dragged stays where it is
    new WindowEdges(dialog->GetTileBar(), dialog->GetMainWidget()->x());
}
