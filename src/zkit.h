#ifndef ZKIT_H
#define ZKIT_H

// Umbrella header: every public header of the toolkit.

#include "zglobal.h"

#include "qgraphicsflowlayout.h"
#include "qtgradient.h"
#include "zspacer.h"
#include "zwidget.h"

#include "toxmlstringtool.h"
#include "xmlnode.h"
#include "xmlparserbase64tool.h"
#include "zcreator.h"
#include "zfindchild.h"
#include "zhelper.h"
#include "zmethodinvoker.h"
#include "zpropertyconverter.h"
#include "zsignalconnector.h"
#include "zxmlui.h"

#include "zcolortable.h"
#include "zresource.h"
#include "ztheme.h"
#include "zthemechangeevent.h"

#include "zframeitem.h"
#include "zicon.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zmaskimageitem.h"
#include "zshapeitem.h"
#include "ztextitem.h"
#include "zutility.h"

#include "zabstractbutton.h"
#include "zbuttongroup.h"
#include "zcheckbutton.h"
#include "zpushbutton.h"
#include "zradiobutton.h"

#include "zprogressbar.h"
#include "zscrollarea.h"
#include "zscrollbar.h"
#include "zscrollwidget.h"
#include "zslider.h"

#include "zaction.h"
#include "zapplication.h"
#include "zbubbletip.h"
#include "zdialog.h"
#include "zdialogbase.h"
#include "zfollowwindow.h"
#include "zframewindow.h"
#include "zmenu.h"
#include "zmenustyle.h"
#include "zmessagebox.h"
#include "zpopupwindow.h"
#include "ztextbubbletip.h"
#include "ztitlebar.h"
#include "ztooltip.h"
#include "zwindow.h"

#include "ztoolbar.h"

#include "zabstractlistmodel.h"
#include "zabstracttreemodel.h"
#include "zcolorcombobox.h"
#include "zcomboboxwidget.h"
#include "zcommoncombobox.h"
#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zcommontreemodel.h"
#include "zfontcombobox.h"
#include "zlistitem.h"
#include "zlistitemcreator.h"
#include "zlistwidget.h"
#include "zpopuplistwindow.h"

#include "qlineeditex.h"
#include "zhotkey.h"
#include "zlineedit.h"
#include "ztextedit.h"

#endif // ZKIT_H
