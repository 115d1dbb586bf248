/* QUILL32.dll public interface: classes, messages, styles, notification codes,
   type letters, the records that hosts see, and the exported functions.
   Safe to include from a resource script: only the #define lines are seen there. */
#ifndef QUILL32_H
#define QUILL32_H

#ifndef RC_INVOKED
#if defined(QUILL32_NATIVE)
#include "qnative.h" /* the library's own Linux build of its window-free layers */
#else
#include <windows.h>
#endif
#include <stddef.h>
#endif

#ifndef QUILLAPI
#define QUILLAPI WINAPI
#endif

/* ---- Class names ---- */
#define HBUTT_CLASS "HButt"
#define HEDIT_CLASS "HEdit"
#define HEDITSS_CLASS "HEdit_SS"
#define HLIST_CLASS "HList"
#define HSTAT_CLASS "HStat"
#define HTOOL_CLASS "HTool"
#define HCOMB_CLASS "HComb"
#define HDROP_CLASS "HDrop"
#define HGRID_CLASS "HGrid"

/* ---- Module resources ---- */
#define IDC_HGRID_CURSOR 4301
#define IDC_HGRID_CURSOR2 4302
#define IDC_HGRID_CURSOR3 4303
#define IDC_HGRID_CURSOR4 4304
#define IDI_HGRID_ICON 3000

/* ---- Common run-time flags of every control record ---- */
#define HCTLF_NONOTIFY 0x0800
#define HCTLF_VETO 0x1000
#define HCTLF_MODIFIED 0x2000

/* ---- Common messages ---- */
#define HM_GETMODIFY 0x471
#define HM_SETMODIFY 0x472
#define HM_SETNONOTIFY 0x477
#define HM_GETNONOTIFY 0x478
#define HM_GETPTR 0x47B
#define HM_SETPTR 0x47C
#define HM_GETNOTIFY 0x47D
#define HM_SETNOTIFY 0x47E
#define HM_GETSTYLE 0x47F
#define HM_SETSTYLE 0x480
#define HM_VETO 0x483

/* ---- Design-time codes of HCtlDesignMode ---- */
#define HCTL_DESIGN_RWS 0xB12
#define HCTL_DESIGN_DLGEDIT 0xA31

/* ---- Colour request kinds of HCtlColor ---- */
#define HCTLCOLOR_GRID 21
#define HGM_CTLCOLOR 0x5A8
#define HLM_FILLSAMPLE 0x4F3

/* ---- Class and type letters ---- */
#define HCLASS_DATETIME 'a'
#define HCLASS_BOOL 'b'
#define HCLASS_CURRENCY 'c'
#define HCLASS_DATE 'd'
#define HCLASS_CHAR 'h'
#define HCLASS_CLOCK 'k'
#define HCLASS_MASKED 'm'
#define HCLASS_NUMBER 'n'
#define HCLASS_STRING 's'
#define HCLASS_TIME 't'
#define HCLASS_CALC 'z'

/* Type letters of the number family (classes b, c, n, z) */
#define HTYPE_BYTE 'b'       /* unsigned 8 bits */
#define HTYPE_CHAR 'h'       /* signed 8 bits */
#define HTYPE_SHORT 's'      /* signed 16 bits */
#define HTYPE_WORD 'w'       /* unsigned 16 bits */
#define HTYPE_INT 'i'        /* signed 32 bits */
#define HTYPE_LONG 'l'       /* signed 32 bits */
#define HTYPE_ULONG 'u'      /* unsigned 32 bits */
#define HTYPE_DWORD 'W'      /* unsigned 32 bits */
#define HTYPE_FLOAT 'f'      /* IEEE single */
#define HTYPE_DOUBLE 'd'     /* IEEE double */
#define HTYPE_MONEY 'M'      /* two unsigned 32-bit words, reserved */
/* Type letters of the date and time family (classes a, k) */
#define HTYPE_DATETIME 'D'   /* an HDateTime, 10 bytes */
#define HTYPE_SERIAL 'Q'     /* serial day from 1900-01-01, then milliseconds */
#define HTYPE_SERIAL16 'q'   /* 16-bit serial day, then 16-bit minutes */
#define HTYPE_TIME_T 'T'     /* calendar time of mktime and localtime */
#define HTYPE_TM 'm'         /* the nine integers of struct tm */
#define HTYPE_SYSTEMTIME 's' /* six words and 32-bit milliseconds */
#define HTYPE_OLEDATE 'u'    /* double, days from 1899-12-30 */
/* Type letters of class d */
#define HTYPE_DOSDATE 'A'    /* packed day, month, year - 1980 */
#define HTYPE_DMY 'a'        /* day byte, month byte, year word */
#define HTYPE_YMD 'd'        /* year, month, day words */
#define HTYPE_YYYYMMDD 'l'   /* signed 32-bit yyyymmdd */
/* Type letters of class t */
#define HTYPE_DOSTIME 'I'    /* packed hour, minute, second / 2 */
#define HTYPE_HMSH 'i'       /* hour, minute, second, hundredths bytes */
#define HTYPE_HMS 't'        /* hour, minute, second words */
/* Type letter of the text classes m, s */
#define HTYPE_STRING 's'

/* ---- Grid data ---- */
/* HGS_ bits: the low word of HGridData.style */
#define HGS_READONLY 0x0001
#define HGS_NOGRIDLINES 0x0002
#define HGS_MDICHILD 0x0004
#define HGS_INPLACE 0x0008
#define HGS_NEWROW 0x0010
#define HGS_SIZEROWS 0x0020
#define HGS_SIZECOLS 0x0040
#define HGS_ROWHEADERS 0x0080
#define HGS_COLHEADERS 0x0100
#define HGS_INSDEL 0x0200
#define HGS_DLGKEYS 0x0400
#define HGS_KEEPSEL 0x0800
#define HGS_FIELDMAP 0x1000
#define HGS_ROWSELECT 0x2000
#define HGS_SINGLESEL 0x4000
#define HGS_KEEPBARS 0x8000
/* HGridData.options: metrics in nominal units of a 4 by 8 font (low two bits equal to 1) */
#define HGO_UNITS 1
/* HGField.flags */
#define HGF_HIDDEN 0x0001
#define HGF_READONLY 0x0004
#define HGF_CODED 0x0008
/* recordStatus of a grid record */
#define HGR_DIRTY 0x0001
#define HGR_NEW 0x0002
#define HGR_MARKED 0x0008
/* cellStatus word of a cell */
#define HGC_NULL 0x0001
/* Class bits of HGridWindow.wFlags */
#define HGW_TRACKING 0x0001
#define HGW_CELLSHOWN 0x0002
#define HGW_PARTIALROW 0x0004
#define HGW_LINEDRAWN 0x0008
#define HGW_COLDRAG 0x0010
#define HGW_EDITORSHOWN 0x0020
#define HGW_EDITING 0x0040
#define HGW_RANGE 0x0080
#define HGW_VIRTUAL 0x0400
#define HGW_SILENT 0x4000
#define HGW_SELECTING 0x8000
/* .GRS version words, and the resource type of a grid in a module */
#define HGV_GH 0x4847 /* header items 0 to 5 */
#define HGV_HH 0x4848 /* header items 0 to 5, the name written with its length twice */
#define HGV_IH 0x4849 /* header items 0 to 7 */
#define HGV_JH 0x484A /* header items 0 to 7; what HGridCreate sets */
#define HGRID_RESOURCE_TYPE 300

/* ---- Dates ---- */
#define HN_BADDATE 0x602 /* a date or time check found a bad field; a veto returns the focus */

/* ---- Numbers ---- */
#define HNUM_GROUP 0x0001 /* HNumMask.flags: group the integer part by thousands */
#define HNUM_MINUS 0x0002 /* HNumMask.flags: write a minus sign */

/* ---- Typed control protocol (HEdit, HList; parts in HButt, HGrid) ---- */
#define HM_GETBACKBRUSH 0x464
#define HM_SETBACKBRUSH 0x465
#define HM_GETMASK 0x466
#define HM_SETMASK 0x467
#define HM_GETFOCUSBRUSH 0x468
#define HM_SETFOCUSBRUSH 0x469
#define HM_GETCOLOR 0x46A
#define HM_SETCOLOR 0x46B
#define HM_GETCLASS 0x46C
#define HM_GETDATASIZE 0x46D
#define HM_GETTYPE 0x46E
#define HM_GETDATALINK 0x46F
#define HM_SETDATALINK 0x470

/* ---- HStat ---- */
#define HSS_KINDMASK 0x000F
#define HSS_SUNKEN 0x0010      /* three-dimensional frame */
#define HSS_RIDGE 0x0020       /* ridge frame; wins over HSS_SUNKEN */
#define HSS_LEFT 0x0040        /* content at the left */
#define HSS_RIGHT 0x0080       /* content at the right; neither bit: centred */
#define HSS_EMBOSS 0x0100      /* a white copy of the text one pixel right and down */
#define HSS_TRANSPARENT 0x0200 /* no background */
#define HSK_TEXT 0
#define HSK_GROUP 1
#define HSK_BLANK 2
#define HSK_IMAGE 3
#define HSK_HLINE 4
#define HSK_VLINE 5
#define HSM_GETALIGN 0x590
#define HSM_SETALIGN 0x591
#define HSM_GETBKCOLOR 0x592
#define HSM_SETBKCOLOR 0x593
#define HSM_GETTEXTCOLOR 0x594
#define HSM_SETTEXTCOLOR 0x595
#define HSM_GETIMAGE 0x596
#define HSM_SETIMAGE 0x597
#define HSM_GETKIND 0x598
#define HSM_SETKIND 0x599
#define HSM_GETPALETTE 0x59A

/* ---- Dialog info ---- */
#define HDLGINFO_PROP "L"      /* the property that holds a window's dialog info */

/* ---- Drawing: option bits of DrawPushButton ---- */
#define DPB_DISABLED 0x01   /* text in COLOR_GRAYTEXT */
#define DPB_DEFAULT 0x02    /* one more black line inside the frame */
#define DPB_PRESSED 0x04    /* the face drawn pressed in */
#define DPB_LEFT 0x08       /* text left-aligned */
#define DPB_RIGHT 0x10      /* text right-aligned; wins over DPB_LEFT */
#define DPB_EMBOSS 0x20     /* a white copy of the text one pixel right and down */
#define DPB_SQUARE 0x40     /* square frame, no background fill */
#define DPB_RETURNRECT 0x80 /* the rectangle comes back as the inner face */

/* ---- Images: HImage.type ---- */
#define HIMAGE_NONE 0
#define HIMAGE_BITMAP 1 /* device-dependent bitmap */
#define HIMAGE_ICON 2
#define HIMAGE_DIB 3    /* bitmap made from a device-independent bitmap, with its palette */

/* ---- HButt styles read by the drawing routines ---- */
#define HBS_LEFT 0x0020  /* text left-aligned */
#define HBS_RIGHT 0x0040 /* text right-aligned; wins over HBS_LEFT */

/* ---- Grid window: the messages and notifications that the cell layer uses ---- */
#define HGM_RELAYOUT 0x531
#define HGM_SETTOPROW 0x541
#define HGM_SETCACHESIZE 0x562
#define HGN_SETFOCUS 1
#define HGN_KILLFOCUS 2
#define HGN_CELLMOVED 3
#define HGN_DBLCLK 4
#define HGN_DESTROY 5
#define HGN_SCROLLTOP 0x0F
#define HGN_SCROLLEND 0x10
#define HGN_ROWADDED 0x11
#define HGN_ROWCHANGED 0x12
#define HGN_CELLCHANGED 0x13
#define HGN_ROWDELETED 0x14
#define HGN_COLSMOVED 0x15
#define HGN_ROWSIZED 0x16
#define HGN_COLSIZED 0x17
#define HGN_MOVING 0x18
#define HGN_EXTENDING 0x19
#define HGN_HSCROLLED 0x20
#define HGN_VSCROLLED 0x21
#define HGN_HRANGE 0x22
#define HGN_VRANGE 0x23
/* HList item messages through which a coded grid cell is translated */
#define HLM_GETDATA 0x4A2
#define HLM_GETCODE 0x4A3
#define HLM_FINDDATA 0x4B1
#define HLM_FINDCODE 0x4B9

/* ---- HList ---- */
/* HLItem.flags */
#define HL_SELECTED 0x0001
#define HL_MARKED 0x0002
/* HList wFlags bits that the application may read with HLM_GETFLAGS */
#define HLF_SINGLE 0x0010
#define HLF_BATCH 0x0040
#define HLF_HASCODE 0x0080
/* Selection modes */
#define HLSEL_CLEAR 0
#define HLSEL_SET 1
#define HLSEL_TOGGLE 2
/* Ways of marking */
#define HLMARK_ALL 0
#define HLMARK_BYDATA 1
#define HLMARK_BYCODE 2
#define HLMARK_BYINDEX 4
#define HLMARK_SELECTED 8
#define HLMARK_UNSELECTED 0x10
/* What HLGetItems gives */
#define HLGET_DATA 1
#define HLGET_CODE 2
#define HLGET_INDEX 4
/* HList messages; the older numbers 0x400 to 0x423 are LB_ messages plus 0x280 */
#define HLM_GETCOUNT 0x496
#define HLM_RESETCONTENT 0x497
#define HLM_DELETEITEM 0x4A0
#define HLM_SELECTITEM 0x4A1
#define HLM_SELECTITEM2 0x4D5
#define HLM_GETTEXT 0x4A4
#define HLM_GETTEXTLEN 0x4A5
#define HLM_SETCODE 0x4A6
#define HLM_FINDTEXT 0x4A8
#define HLM_SELECTTEXT 0x4A9
#define HLM_ADDITEM 0x4AF
#define HLM_INSERTITEM 0x4B0
#define HLM_SELECTDATA 0x4B2
#define HLM_GETCURDATA 0x4B3
#define HLM_GETCODECLASS 0x4B4
#define HLM_GETCODELINK 0x4B5
#define HLM_SETCODELINK 0x4B6
#define HLM_GETCODESIZE 0x4B7
#define HLM_GETCODETYPE 0x4B8
#define HLM_SELECTCODE 0x4BA
#define HLM_GETCURCODE 0x4BB
#define HLM_RELAYOUT 0x4C8
#define HLM_GETCARET 0x4D2
#define HLM_SETCARET 0x4D3
#define HLM_ISSELECTED 0x4D4
#define HLM_GETSELCOUNT 0x4D6
#define HLM_SELECTRANGE 0x4D7
#define HLM_GETSELITEMS 0x4D8
#define HLM_SETCOLUMNWIDTH 0x4DC
#define HLM_GETVIEWWIDTH 0x4DD
#define HLM_GETITEMRECT 0x4DE
#define HLM_GETTOPINDEX 0x4E6
#define HLM_SETTOPINDEX 0x4E7
#define HLM_SCROLL 0x4E9
#define HLM_SETTABSTOPS 0x4EA
#define HLM_SETREDRAW 0x4ED
#define HLM_GETFLAGS 0x4F1
#define HLM_SETFLAGS 0x4F2
#define HLM_GETSTYLE 0x4F4
#define HLM_OLDFIRST 0x400
#define HLM_OLDLAST 0x423
#define HLM_OLDOFFSET 0x280
/* HList notifications */
#define HLN_SELCHANGE 1
#define HLN_DBLCLK 2
#define HLN_SETFOCUS 4
#define HLN_KILLFOCUS 5
/* Key notifications of the typed controls */
#define HN_ENTER 0x101
#define HN_ESCAPE 0x102
#define HN_TAB 0x107
#define HN_BACKTAB 0x108
#define HN_HELP 0x10D

/* ---- HButt ---- */
#define HBT_PUSH 0
#define HBT_DEFPUSH 1
#define HBT_CHECK 2
#define HBT_RADIO 3
#define HBT_3STATE 4
#define HBT_PUSHRADIO 6
#define HBS_TYPEMASK 0x000F
#define HBS_TRANSPARENT 0x0010 /* no memory bitmap, no background */
#define HBS_NOFOCUS 0x0080     /* never takes the focus by a click */
#define HBS_OWNERDRAW 0x0100   /* WM_DRAWITEM to the notify target first */
#define HBS_UPDOWN 0x0400      /* two images per value: normal and pressed */
#define HBS_AUTO 0x0800        /* a click advances the value; radios clear their group */
#define HBS_NOFRAME 0x1000
#define HBS_EMBOSS 0x2000      /* text with a white shadow */
#define HBS_SQUARE 0x4000      /* square frame, no cut corners */
#define HBS_ASYNCSOUND 0x8000  /* set by "%a" in the specification text */
#define HBF_KEYHELD 0x0001
#define HBF_PRESSED 0x0004
#define HBF_FOCUSDRAWN 0x0010
#define HBF_SOUNDFILE 0x0020
#define HBF_GROUPPOS 0x0040
#define HBF_NOVALUE 0x4000
#define HBN_CLICKED 0
#define HBN_DOUBLECLICKED 5
#define HBM_GETIMAGEPOS 0x41E
#define HBM_GETIMAGE 0x41F
#define HBM_GETIMAGECOUNT 0x420
#define HBM_GETTRANSCOLOR 0x421
#define HBM_GETRELATION 0x422
#define HBM_GETSOUND 0x423
#define HBM_GETTEXTPOS 0x424
#define HBM_GETBTNTYPE 0x427
#define HBM_SETIMAGEPOS 0x432
#define HBM_SETIMAGE 0x433
#define HBM_SETTRANSCOLOR 0x434
#define HBM_SETRELATION 0x435
#define HBM_SETSOUND 0x436
#define HBM_SETTEXTPOS 0x437
#define HBM_GETDATA 0x438
#define HBM_SETDATA 0x439
#define HBM_GETLINK 0x43A
#define HBM_SETLINK 0x43B
#define HBM_GETDATASIZE 0x43C
#define HBM_GETSTATECOUNT 0x43D
#define HBM_ISGROUPEND 0x43E
#define HBM_SETIMAGECOUNT 0x43F
#define HBM_GETPALETTE 0x440
#define HBM_CLICK 0x463
/* String table entries of LoadDefTypeText */
#define IDS_HBUTT_RADIOIMAGES 1250
#define IDS_HBUTT_CHECKIMAGES 1251
#define IDS_HBUTT_3STATEIMAGES 1252
#define IDS_HBUTT_BOXPREFIX 1253
#define IDS_HBUTT_PUSHPREFIX 1254
#define IDS_HBUTT_PUSH 1255
#define IDS_HBUTT_RADIO 1257
#define IDS_HBUTT_CHECK 1258
#define IDS_HBUTT_3STATE 1259
#define IDS_HBUTT_CHECKPREFIX 1262

/* ---- HGrid message block (HGM_RELAYOUT, HGM_SETTOPROW, HGM_SETCACHESIZE and
   HGM_CTLCOLOR stand above); cells are packed column low, row high */
#define HGM_SETGRID 0x52C
#define HGM_GETGRID 0x52D
#define HGM_CLEAR 0x52E
#define HGM_GETCOLHEADERHEIGHT 0x536
#define HGM_SETCOLHEADERHEIGHT 0x537
#define HGM_GETROWHEADERWIDTH 0x538
#define HGM_SETROWHEADERWIDTH 0x539
#define HGM_GETROWHEIGHT 0x53A
#define HGM_SETROWHEIGHT 0x53B
#define HGM_GETFIELDCOUNT 0x53C
#define HGM_GETRECORDCOUNT 0x53D
#define HGM_GETLEFTCOL 0x53E
#define HGM_SETLEFTCOL 0x53F
#define HGM_GETTOPROW 0x540
#define HGM_GETFROZEN 0x542
#define HGM_SETFROZEN 0x543
#define HGM_GETANCHOR 0x544
#define HGM_SETANCHOR 0x545
#define HGM_GETCURRENT 0x546
#define HGM_SETCURRENT 0x547
#define HGM_GETFLAGS 0x548
#define HGM_SETFLAGS 0x549
#define HGM_GETNAME 0x54A
#define HGM_SETNAME 0x54B
#define HGM_ADDFIELD 0x54C
#define HGM_REMOVEFIELD 0x54D
#define HGM_INSERTFIELD 0x54E
#define HGM_MOVEFIELD 0x54F
#define HGM_ADDRECORD 0x550
#define HGM_DELETERECORD 0x551
#define HGM_INSERTRECORD 0x552
#define HGM_MOVERECORD 0x553
#define HGM_GETROWBASE 0x554
#define HGM_SETROWBASE 0x555
#define HGM_GETCURRECORD 0x558
#define HGM_FINDFIELD 0x55A
#define HGM_GETFIELDORDER 0x55B
#define HGM_SETFIELDORDER 0x55C
#define HGM_GETDATAPROC 0x55D
#define HGM_SETDATAPROC 0x55E
#define HGM_GETTOTAL 0x55F
#define HGM_SETTOTAL 0x560
#define HGM_GETCACHESIZE 0x561
#define HGM_SETSTYLEBITS 0x564
#define HGM_GETSTOREDPOS 0x565
#define HGM_GETFIELDATPOS 0x566
#define HGM_RECORDTOROW 0x567
#define HGM_GETNOTIFYCELL 0x568
#define HGM_SETNOTIFYCELL 0x569
#define HGM_GETHSCROLLPOS 0x56A
#define HGM_GETVSCROLLPOS 0x56B
#define HGM_SETHSCROLLPOS 0x56C
#define HGM_SETVSCROLLPOS 0x56D
#define HGM_GETVSCROLLMAX 0x56E
#define HGM_GETHSCROLLMAX 0x56F
#define HGM_GETSELROWS 0x570
#define HGM_GETSELCOUNT 0x571
#define HGM_TOGGLEROW 0x572
#define HGM_GETROWSTATUS 0x57C
#define HGM_SETROWSTATUS 0x57D
#define HGM_GETRECORD 0x57E
#define HGM_SETRECORD 0x57F
#define HGM_GETMIRROR 0x580
#define HGM_SETMIRROR 0x581
#define HGM_GETRECORDSIZE 0x582
#define HGM_ISROWSELECTED 0x583
/* Field messages: wParam a storage position, lParam the value */
#define HGM_FLD_GETEDITOR 0x590
#define HGM_FLD_GETEDITORSTYLE 0x591
#define HGM_FLD_GETEDITORKIND 0x592
#define HGM_FLD_GETCLASS2 0x593
#define HGM_FLD_GETTYPE2 0x594
#define HGM_FLD_GETCLASS 0x595
#define HGM_FLD_GETSIZE 0x596
#define HGM_FLD_GETTYPE 0x597
#define HGM_FLD_GETFORMAT 0x598
#define HGM_FLD_SETFORMAT 0x599
#define HGM_FLD_GETFORMATLEN 0x59A
#define HGM_FLD_GETTITLE 0x59B
#define HGM_FLD_GETTITLELEN 0x59C
#define HGM_FLD_SETTITLE 0x59D
#define HGM_FLD_GETWIDTH 0x59E
#define HGM_FLD_SETWIDTH 0x59F
#define HGM_FLD_GETHEIGHT 0x5A0
#define HGM_FLD_SETHEIGHT 0x5A1
#define HGM_FLD_GETFLAGS 0x5A2
#define HGM_FLD_SETFLAGS 0x5A3
#define HGM_FLD_GETOFFSET 0x5A6
#define HGM_FLD_RESERVED 0x5A7
#define HCM_SETDROPHEIGHT 0x512
/* Ids of the grid's edit bar, dialog 4103 */
#define IDD_HGRID_EDITBAR 4103
#define IDC_HGRID_BARTITLE 4185
#define IDC_HGRID_BAREDITOR 4186
#define IDC_HGRID_BARRECORD 4187

/* ---- HComb ---- */
/* Styles, low word */
#define HCS_DROPLIST 0x0001   /* the list drops down from a button; otherwise it stands open */
#define HCS_EDITABLE 0x0008   /* the top child is an HEdit_SS; otherwise a one-item HList */
#define HCS_FRAME3D 0x0010    /* three-dimensional frames */
#define HCS_FOCUSBRUSH 0x0020 /* focus brush */
#define HCS_WANTKEYS 0x1000   /* all keys; Tab, Enter and Escape are notified */
/* Notifications */
#define HCN_SELCHANGE 1
#define HCN_DBLCLK 2
#define HCN_SETFOCUS 4
#define HCN_KILLFOCUS 5
#define HCN_EDITUPDATE 6
#define HCN_DROPDOWN 7
#define HCN_EDITCHANGE 8
/* Messages; the older numbers 0x400 to 0x418 are CB_ messages plus 0x2C0 */
#define HCM_SYSKEY 0x4FB
#define HM_CHILDFOCUS 0x479 /* from the subclassed top child: it gained the focus */
#define HM_CHILDBLUR 0x47A  /* from the subclassed top child: it lost the focus */
#define HCM_GETDROPHEIGHT 0x511
#define HCM_SETDROPHEIGHT 0x512
#define HCM_OLDFIRST 0x400
#define HCM_OLDLAST 0x418
#define HCM_OLDOFFSET 0x2C0

/* ---- HTool ---- */
#define HTS_BOTTOM 0x0001     /* docks at the bottom; wins over all others */
#define HTS_LEFT 0x0002       /* docks at the left */
#define HTS_RIGHT 0x0004      /* docks at the right; wins over HTS_LEFT */
#define HTS_OWNLENGTH 0x0008  /* keeps its own length along the edge */
#define HTS_FONTGIVEN 0x8000  /* hFont came by WM_SETFONT and is not the bar's to delete */
#define HTM_GETBRUSH 0x40C
#define HTM_SETBRUSH 0x40D
#define HTM_GETBARSIZE 0x410
#define HTM_SETBARSIZE 0x411

/* ---- HEdit ---- */
/* Style bits, low word of dwStyle */
#define HES_CENTER 0x0001     /* centred outside editing */
#define HES_RIGHT 0x0002      /* right-aligned outside editing */
#define HES_UPPERCASE 0x0008  /* typed characters forced to upper case */
#define HES_LOWERCASE 0x0010  /* typed characters forced to lower case */
#define HES_PASSWORD 0x0020   /* draws passwordChar; no cut or copy */
#define HES_AUTOHSCROLL 0x0080 /* the text scrolls horizontally */
#define HES_KEEPSEL 0x0100    /* the selection stays visible without the focus */
#define HES_FRAME3D 0x0200    /* three-dimensional frame */
#define HES_FOCUSBRUSH 0x0400 /* focusBrush while focused */
#define HES_EDITRIGHT 0x0800  /* right-aligned while editing; set by itself for class z */
#define HES_WANTKEYS 0x1000   /* wants all keys */
/* Class bits of wFlags, read with HEM_GETFLAGS */
#define HEF_DISPLAY 0x0002
#define HEF_RIGHT 0x0004
#define HEF_CENTER 0x0008
#define HEF_REPLACING 0x0010
#define HEF_LIMITED 0x0020
#define HEF_DIRTY 0x0040
#define HEF_ALTCOLOR 0x0080
#define HEF_SKIPCHAR 0x0100
#define HEF_THUMB 0x0200
#define HEF_FOCUS 0x0400
#define HEF_EMPTY 0x4000
/* Messages; the older numbers 0x400 to 0x41D are the EM_ messages plus 0x350 */
#define HEM_OLDFIRST 0x400
#define HEM_OLDLAST 0x41D
#define HEM_OLDOFFSET 0x350
#define HEM_GETDATA 0x428
#define HEM_SETDATA 0x429
#define HEM_GETTEXTRECT 0x42A
#define HEM_SETTEXTRECT 0x42B
#define HEM_GETLIMIT 0x42C
#define HEM_GETOVERWRITE 0x42D
#define HEM_SETOVERWRITE 0x42E
#define HEM_GETPASSWORDCHAR 0x42F
#define HEM_SETPASSWORDCHAR 0x430
#define HEM_GETFIRSTCHAR 0x431
#define HEM_SETFIRSTCHAR 0x432
#define HEM_COMMIT 0x435
#define HEM_GETVALIDATE 0x436
#define HEM_SETVALIDATE 0x437
#define HEM_VALIDATE 0x438
#define HEM_GETSELTEXT 0x439
#define HEM_INSERTTEXT 0x43A
#define HEM_GETFLAGS 0x475
#define HEM_SETFLAGS 0x476
#define HEM_GETTEXTPTR 0x481
#define HEM_GETMASKPTR 0x482
/* Notifications */
#define HEN_SETFOCUS 0x100
#define HEN_KILLFOCUS 0x200
#define HEN_CHANGE 0x300
#define HEN_UPDATE 0x400
#define HEN_MAXTEXT 0x501
#define HEN_HSCROLL 0x601
#define HEN_DBLCLK 0x10C

/* @@SECTION defines: later families add their constants above this line */

#ifndef RC_INVOKED

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---- */

/* Head of every control's instance record. */
typedef struct HCtlBase {
    HWND hWnd;     /* the control's own window */
    HWND hNotify;  /* notify target of WM_COMMAND and colour requests; 0 silences */
    WORD wId;      /* control id: low word of the creation hMenu */
    WORD wPad;     /* keeps hFont on its natural boundary */
    HFONT hFont;   /* current font, 0 for the system default */
    WORD wFlags;   /* HCTLF_ bits and the class's own bits */
} HCtlBase;

/* Head of HButt, HEdit, HList, HComb and HTool: dwStyle follows wFlags on a
   16-bit boundary. */
#pragma pack(push, 2)
typedef struct HCtlBaseEx {
    HWND hWnd;
    HWND hNotify;
    WORD wId;
    WORD wPad;
    HFONT hFont;
    WORD wFlags;
    DWORD dwStyle; /* the creation style, whole */
    WORD wExtra;   /* read by nobody; written by HM_SETSTYLE */
} HCtlBaseEx;
#pragma pack(pop)

/* Date and time exchange record: the one form all date and time types convert through. */
typedef struct HDateTime {
    SHORT wYear;        /* negative before Christ; no year 0 */
    BYTE bMonth;        /* 1..12 */
    BYTE bDay;          /* 1..31 */
    BYTE bHour;         /* 0..23 */
    BYTE bMinute;       /* 0..59 */
    BYTE bSecond;       /* 0..59 */
    BYTE bFiller;       /* keeps wMillisecond on a 16-bit boundary */
    WORD wMillisecond;  /* 0..999 */
} HDateTime;

/* ---- Container ---- */

typedef struct HLNode {
    struct HLNode *next; /* the link; the owner's payload follows */
} HLNode;

struct HLList;
typedef LPVOID(CALLBACK *HLLISTALLOCPROC)(struct HLList *list, LPVOID data);
typedef LONG(CALLBACK *HLLISTCOMPAREPROC)(struct HLList *list, LPCVOID key, LPVOID node);
typedef LONG(CALLBACK *HLLISTFREEPROC)(struct HLList *list, LPVOID node);
typedef LPVOID(CALLBACK *HLLISTDATAPROC)(struct HLList *list, LPVOID node);
typedef LONG(CALLBACK *HLDATACOMPAREPROC)(LPCVOID key, LPCVOID payload);

#define HLLIST_SORTED 0x0001
#define HLLIST_EMPTY 0x0002

typedef struct HLList {
    LONG itemSize;                    /* payload bytes; -1 for a terminated string */
    LONG count;                       /* number of nodes */
    LONG cursorIndex;                 /* index of the node in cursor */
    HLLISTALLOCPROC pfnAlloc;         /* makes a node */
    HLLISTCOMPAREPROC pfnCompare;     /* compares a key with a node */
    HLLISTFREEPROC pfnFree;           /* releases a node */
    HLLISTDATAPROC pfnData;           /* gives a node's payload */
    HLDATACOMPAREPROC pfnDataCompare; /* compares two payloads; may be null */
    DWORD userWord;                   /* the owner's */
    WORD flags;                       /* HLLIST_SORTED, HLLIST_EMPTY */
    HLNode *first;                    /* first node, null when empty */
    HLNode *last;                     /* last node, null when empty */
    HLNode *cursor;                   /* the cached node */
} HLList;

/* ---- Grid data ---- */

/* A column of a grid: a typed field of its records. */
typedef struct HGField {
    WORD flags;          /* HGF_ bits; the others are kept and saved */
    SHORT width;         /* column width, at least 2 */
    SHORT height;        /* drop-down height of "c" and "d" editors */
    SHORT size;          /* bytes of the cell in a record */
    char classLetter;    /* first type pair */
    char typeLetter;
    char classLetter2;   /* second pair: the code's type of an HGF_CODED field */
    char typeLetter2;
    char editorKind;     /* "c", "d", "e", "k" or "l"; anything else has no editor */
    DWORD editorStyle;   /* window style of the editor */
    LPSTR title;         /* owned; header text and lookup key */
    LPSTR format;        /* owned, never null */
    SHORT offset;        /* where the cell begins in the cell area */
    HCtlBase *editor;    /* the editor's record, not owned; null until linked */
} HGField;

/* The whole state of a grid, window or not. */
typedef struct HGridData {
    WORD version;         /* .GRS format number; 0x484A when created */
    DWORD style;          /* HGS_ bits low, WS_ bits high */
    DWORD options;        /* HGO_UNITS in the low two bits; the rest kept */
    SHORT frozenCols;     /* leading columns that do not scroll */
    SHORT rowHeight;      /* height of every row */
    SHORT rowHeaderWidth; /* width of the row header strip */
    SHORT colHeaderHeight;/* height of the column header strip */
    SHORT minRows;        /* blank records that linking guarantees */
    LPSTR name;           /* owned; also the window text */
    HLList *fields;       /* owned; the fields in display order */
    HLList *records;      /* owned; itemSize = cells + status words, userWord = cells */
    HLList *fieldMap;     /* owned, may be null; field index of each storage position */
} HGridData;

/* One node of HGridData.records. */
typedef struct HGRecord {
    HLNode link;          /* next record */
    WORD recordStatus;    /* HGR_ bits */
    BYTE cells[1];        /* cell area (userWord bytes), then one cellStatus word per field */
} HGRecord;

#if defined(QUILL32_NATIVE) && !defined(OFS_MAXPATHNAME)
#define OFS_MAXPATHNAME 128
typedef struct _OFSTRUCT {
    BYTE cBytes;
    BYTE fFixedDisk;
    WORD nErrCode;
    WORD Reserved1;
    WORD Reserved2;
    CHAR szPathName[OFS_MAXPATHNAME];
} OFSTRUCT, *LPOFSTRUCT;
#endif

/* A node of the grid stash: a grid kept by owner thread and name. */
typedef struct HGStashEntry {
    HLNode link;          /* next entry */
    DWORD owner;          /* key: thread of the window */
    DWORD reserved;       /* not used */
    HGridData *grid;      /* owned */
    char name[14];        /* key: at most 12 characters */
    OFSTRUCT file;        /* as HGridLoad left it */
} HGStashEntry;

/* I/O callback of HGLoad and HGSave: moves count bytes; 0 on success. */
typedef LONG(CALLBACK *HGIoProc)(LPVOID context, LPVOID buffer, LONG count);
/* Row source of a grid in virtual mode. */
typedef LONG(CALLBACK *HGridDataProc)(HWND hWnd, UINT operation, LONG position, LPVOID data);

/* Instance record of an HGrid window. */
typedef struct HGridWindow {
    HWND hWnd;            /* HCtlBase up to wFlags */
    HWND hNotify;
    WORD wId;
    WORD wPad;
    HFONT hFont;
    WORD wFlags;          /* HCTLF_ and HGW_ bits */
    HBRUSH hBrush;        /* background brush, 0 to ask the notify target */
    SHORT leftCol;        /* first scrolled column shown */
    SHORT topRow;         /* row index of the first row shown */
    LONG rowBase;         /* virtual mode: record number of row index 0 */
    SHORT visibleRows;    /* rows shown, the cut one included */
    SHORT notifyCol;      /* the cell of the notification under way */
    SHORT notifyRow;
    SHORT anchorCol;      /* where the selection began; -1 for whole rows or columns */
    SHORT anchorRow;
    SHORT curCol;         /* the current cell */
    SHORT curRow;
    HWND hBar;            /* edit bar, 0 if none */
    HWND hEditor;         /* editor of the current cell, 0 if none */
    LPVOID recordMirror;  /* application buffer following the current record; not owned */
    HGridData *grid;      /* owned */
    LPSTR designName;     /* owned; design time only: the stash key */
    SHORT cacheSize;      /* rows held in records */
    LONG vScale;          /* records per step of the vertical scroll bar */
    LONG vScrollPos;
    LONG hScrollPos;
    LONG hScrollMax;
    LONG totalRecords;    /* records in the table */
    HGridDataProc dataProc; /* row source, null if none */
} HGridWindow;

/* One section of a number mask as HNumMaskParse counts it. */
typedef struct HNumMask {
    BYTE sectionLength;      /* mask characters in the section, "." part included */
    BYTE intLength;          /* mask characters in the integer part */
    BYTE intSlots;           /* "#", "*" and "0" positions of the integer part */
    BYTE intZeros;           /* "0" positions of the integer part */
    signed char intMax;      /* digit capacity of the integer part; -1 with a "*" */
    BYTE intLiterals;        /* literals of the integer part */
    BYTE fracLength;         /* mask characters from the "." on */
    BYTE fracSlots;          /* digit positions of the fraction part */
    BYTE fracZeros;          /* "0" positions of the fraction part */
    signed char fracMax;     /* digit capacity of the fraction part; -1 with a "*" */
    BYTE fracLiterals;       /* literals of the fraction part, the "." among them */
    BYTE bFiller;            /* keeps flags on a 16-bit boundary */
    WORD flags;              /* HNUM_GROUP, HNUM_MINUS */
} HNumMask;

/* Validator of ParseData: receives the control and its GWL_ID; non-zero refuses the value. */
typedef int(CALLBACK *HDATAVALIDATEPROC)(HWND hWnd, LONG id);

/* An image shown by a control: a share of an entry of the library's image cache. */
typedef struct HImage {
    SHORT type;       /* HIMAGE_ kind; 0 for nothing */
    HANDLE handle;    /* the HBITMAP or HICON */
    HPALETTE palette; /* the palette of HIMAGE_DIB, else 0 */
} HImage;

/* Validator of an HEdit value (HEM_SETVALIDATE): the control, its id and its stored value. */
typedef int(CALLBACK *HEDITVALIDATEPROC)(HWND hWnd, LONG id, LPVOID value);

/* One list item of HList and HDrop: the HLList link, the item's flags, and
   the value copied in line behind them. */
#pragma pack(push, 2)
typedef struct HLItem {
    struct HLItem *next; /* the HLList link */
    WORD flags;          /* HL_ bits */
    BYTE payload[4];     /* itemSize bytes, or a terminated string; the block has size + 6 */
} HLItem;
#pragma pack(pop)

/* @@SECTION types: later families add their records above this line */

/* ---- Library and frame ---- */
typedef LRESULT(CALLBACK *HCTLHANDLER)(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                                       LPBOOL notHandled, LPVOID record);

BOOL QUILLAPI HLibraryEntry(HINSTANCE hInstance, DWORD reason, LPVOID reserved);
void QUILLAPI QuilletInit(void);
ATOM QUILLAPI HRegisterClass(UINT style, WNDPROC wndProc, int clsExtra, int wndExtra,
                             HINSTANCE hInstance, HICON hIcon, HCURSOR hCursor,
                             HBRUSH hbrBackground, LPCSTR menuName, LPCSTR className);

LRESULT CALLBACK HButtWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HEditWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HListWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HStatWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HToolWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HCombWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HDropWnd(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK HGridWnd(HWND, UINT, WPARAM, LPARAM);

LRESULT CALLBACK HButtMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HEditMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HListMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HStatMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HToolMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HCombMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);
LRESULT CALLBACK HGridMsgHandler(HWND, UINT, WPARAM, LPARAM, LPBOOL, LPVOID);

LRESULT QUILLAPI HCtlWndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam,
                             HCTLHANDLER handler, int slot);
BOOL QUILLAPI HCtlCommonMsg(LPVOID record, UINT msg, WPARAM wParam, LPARAM lParam,
                            LRESULT *result);
DWORD QUILLAPI HCtlNotify(LPVOID record, UINT code);
HBRUSH QUILLAPI HCtlColor(LPVOID record, int kind, HDC hDC);
WORD QUILLAPI HCtlDesignMode(HWND hWnd);

/* ---- Window, geometry and string helpers ---- */
void QUILLAPI CenterWindow(HWND hWnd, int offset);
void QUILLAPI RCtoS(HWND hWnd, LPRECT rect);
void QUILLAPI RStoC(HWND hWnd, LPRECT rect);
int QUILLAPI WindowWidth(HWND hWnd);
int QUILLAPI WindowHeight(HWND hWnd);
DWORD QUILLAPI GetBaseUnits(HFONT hFont);
WNDPROC QUILLAPI SubclassWW(HWND hWnd, WNDPROC newProc);
int QUILLAPI SetOverwriteMode(int mode);
int QUILLAPI GetOverwriteMode(void);
LPCSTR QUILLAPI GetHelpName(void);
void __cdecl WriteDebug(LPCSTR format, ...);
int QUILLAPI DemoDlg(void);
int QUILLAPI _fstrnzcpy(LPSTR target, LPCSTR source, int limit);
LPSTR QUILLAPI StringParse(LPCSTR text, char stop, char escape, char replace,
                           char replacement, LPCSTR *rest);

/* ---- Locale ---- */
void QUILLAPI GetIntlSettings(void);
BOOL QUILLAPI SetDecimalSep(char c);
BOOL QUILLAPI SetThousandsSep(char c);
BOOL QUILLAPI SetDateSep(char c);
BOOL QUILLAPI SetTimeSep(char c);
BOOL QUILLAPI SetDefDateFormat(LPCSTR format);
BOOL QUILLAPI SetDefTimeFormat(LPCSTR format);

/* ---- Data type table ---- */
LPCSTR QUILLAPI GetDataTypes(LPCSTR spec, LPSTR class1, LPSTR type1, LPSTR class2, LPSTR type2);
BOOL QUILLAPI ValidClass(char cls);
BOOL QUILLAPI ValidType(char cls, char type);
int QUILLAPI GetDataSize(char cls, char type);
HLDATACOMPAREPROC QUILLAPI HDataCompare(char cls, char type);
int QUILLAPI HDataCopy(LPVOID target, LPCVOID source, char cls, char type, int limit);
BOOL QUILLAPI HDataDiffers(LPCVOID first, LPCVOID second, char cls, char type);

/* ---- HLList container ---- */
HLList *QUILLAPI HLListCreate(LONG itemSize, HLLISTALLOCPROC pfnAlloc, HLLISTCOMPAREPROC pfnCompare,
                              HLDATACOMPAREPROC pfnDataCompare, HLLISTFREEPROC pfnFree,
                              HLLISTDATAPROC pfnData, UINT sorted);
BOOL QUILLAPI HLListCopy(HLList *dest, HLList *source);
BOOL QUILLAPI HLListEmpty(HLList *list);
BOOL QUILLAPI HLListDestroy(HLList *list);
LPVOID QUILLAPI HLListGetItem(HLList *list, LONG index);
LONG QUILLAPI HLListInsert(HLList *list, LONG index, LPVOID data);
BOOL QUILLAPI HLListRemove(HLList *list, LONG index);
LPVOID QUILLAPI HLListFind(HLList *list, LPCVOID key, LONG start, LPLONG found);
LONG QUILLAPI HLListAdd(HLList *list, LPVOID data);

/* ---- Grid data ---- */
HGridData *QUILLAPI HGridCreate(LPCSTR name, DWORD style, DWORD options, int frozenCols,
                                int rowHeight, int rowHeaderWidth, int colHeaderHeight, int minRows);
BOOL QUILLAPI HGridEmpty(HGridData *grid);
BOOL QUILLAPI HGridDestroy(HGridData *grid);
BOOL QUILLAPI HGridCopy(HGridData *dest, HGridData *source);
HGridData *QUILLAPI HGridDup(HGridData *grid);
BOOL QUILLAPI HGridChanged(HGridData *a, HGridData *b);
BOOL QUILLAPI HGridScale(HGridData *grid, HFONT from, HFONT to);
BOOL QUILLAPI HGCreateFldMap(HGridData *grid);
HGField *QUILLAPI HGFieldCreate(LPCSTR title, UINT flags, int width, int height, char classLetter,
                                char typeLetter, char classLetter2, char typeLetter2, int size,
                                char editorKind, DWORD editorStyle, LPCSTR format);
BOOL QUILLAPI HGFieldDestroy(HGField *field);
HGField *QUILLAPI HGFldDup(const HGField *field);
int QUILLAPI HGInsertFld(HGridData *grid, HGField *field, int index);
void QUILLAPI HGFixOffsets(HGridData *grid);
int QUILLAPI HGAppendFld(HGridData *grid, HGField *field);
int QUILLAPI HGMoveFld(HGridData *grid, int from, int to);
BOOL QUILLAPI HGRemoveFld(HGridWindow *gw, int index);
HGField *QUILLAPI HGFieldAt(HGridData *grid, int index);
int QUILLAPI HGMapPosOf(HGridData *grid, int index);
void QUILLAPI HGCreateStash(void);
HLList *QUILLAPI HGGetStash(void);
void QUILLAPI StashGrid(HGridData *grid, DWORD owner, LPCSTR name, const OFSTRUCT *file);
HGStashEntry *QUILLAPI GetStashed(DWORD owner, LPCSTR name, LPLONG index);
BOOL QUILLAPI RemoveStashed(DWORD owner, LPCSTR name);
void QUILLAPI HGStashFld(HGField *field);
HGField *QUILLAPI HGGetFldStash(void);

/* ---- Grid files ---- */
HGridData *QUILLAPI HGLoad(HGIoProc proc, LPVOID context);
BOOL QUILLAPI HGSave(HGIoProc proc, LPVOID context, UINT version, HGridData *grid);
HGridData *QUILLAPI HGridLoad(LPCSTR fileName, OFSTRUCT *of);
HGridData *QUILLAPI HGLoadResourceGrid(HMODULE module, LPCSTR name);

/* ---- Dates and times ---- */
BOOL QUILLAPI DateTimeToData(const HDateTime *record, LPVOID value, char type);
BOOL QUILLAPI DataToDateTime(HDateTime *record, LPCVOID value, char type);
int QUILLAPI HDateFormat(const HDateTime *record, LPCSTR mask, LPSTR text, int size, BOOL editing,
                         BOOL hasDate, BOOL hasTime);
int QUILLAPI HDateParse(HDateTime *record, LPCSTR text, LPCSTR mask, BOOL hasDate, BOOL hasTime);
BOOL QUILLAPI HDateCheck(HWND hWnd, HDateTime *record, BOOL repair, BOOL year, BOOL month, BOOL day);
BOOL QUILLAPI HTimeCheck(HWND hWnd, HDateTime *record, BOOL repair, BOOL ampm, BOOL hour, BOOL minute,
                         BOOL second);
/* Writes at most 128 bytes, the terminator included. */
void QUILLAPI HDateBuildMask(LPCSTR mask, BOOL hasDate, BOOL hasTime, LPSTR result);

/* ---- Typed keystroke editing ---- */
/* The text buffer must have room for what the key adds: the length of the
   longer of text and mask, plus 32 bytes, as the edit control's buffer has. */
int QUILLAPI HDataTypeChar(char cls, char type, LPSTR text, LPCSTR mask, int position, char key,
                           int *advance, int *repaint);
int QUILLAPI HDataDeleteChar(char cls, char type, LPSTR text, LPCSTR mask, int position);

/* ---- Numbers ---- */
double QUILLAPI NumToDouble(LPCVOID value, char type);
BOOL QUILLAPI DoubleToNum(LPVOID value, char type, double number);
LPCSTR QUILLAPI HNumMaskParse(LPCSTR mask, BOOL negative, BOOL editing, HNumMask *parsed);
int QUILLAPI HFormatDouble(double number, LPCSTR mask, LPSTR text, int size, BOOL editing);
double QUILLAPI HNumStrip(LPCSTR text);

/* ---- FormatData and ParseData ---- */
int QUILLAPI FormatData(LPCVOID value, char cls, char type, LPCSTR mask, LPSTR text, int size,
                        LPBOOL negative, BOOL editing);
int QUILLAPI ParseData(HWND hWnd, LPVOID value, char cls, char type, LPCSTR mask, LPCSTR text,
                       HDATAVALIDATEPROC validator);
BOOL QUILLAPI HBoolIsTrue(char type, LPCVOID value);
BOOL QUILLAPI HBoolStore(char type, LPVOID value, BOOL truth);
int QUILLAPI HBoolFormat(BOOL truth, LPCSTR mask, LPSTR text, int size);
BOOL QUILLAPI HBoolParse(LPCSTR mask, LPCSTR text);
int QUILLAPI HMaskApply(LPCSTR source, LPCSTR mask, LPSTR target, int size, BOOL strip);

/* ---- Typed control protocol ---- */
BOOL QUILLAPI StringToColor(LPCSTR text, COLORREF *color);

/* ---- Dialog instantiation and dialog info ---- */
#ifndef QUILL32_NATIVE
HWND QUILLAPI CreateDialogInWin(HINSTANCE hInstance, LPCSTR templateName, HWND hWnd, LPRECT rect, HFONT *font);
BOOL QUILLAPI ClearDialog(HWND hWnd);
LPVOID QUILLAPI CreateDlgInfo(HWND hWnd, LPVOID data, UINT size);
LPVOID QUILLAPI GetDlgInfo(HWND hWnd);
LPVOID QUILLAPI FreeDlgInfo(HWND hWnd, BOOL release);
#endif

/* ---- Drawing and images ---- */
void QUILLAPI DrawPushButton(HWND hWnd, HDC hDC, LPRECT rect, int depth, UINT options, LPCSTR text,
                             HFONT hFont, HBITMAP hBitmap, COLORREF color);
void QUILLAPI Draw3DBorder(HDC hDC, LPRECT rect, int style, BOOL fill);
BOOL QUILLAPI HBDrawText(HDC hDC, LPARAM record, int length);
BOOL QUILLAPI HImageLoad(HImage *image, HINSTANCE module, LPCSTR name);
BOOL QUILLAPI HImageFree(HImage *image, BOOL force);
int QUILLAPI HImageDraw(HDC hDC, const HImage *image, int x, int y, COLORREF transparent);
BOOL QUILLAPI HImageGetSize(const HImage *image, LPINT width, LPINT height);

/* ---- Grid cells ---- */
LPVOID QUILLAPI HGOffsetPtr(HWND hWnd, int col, LPVOID record);
BOOL QUILLAPI HGGetCellData(HWND hWnd, int col, int row, LPVOID buffer);
BOOL QUILLAPI HGSetCellData(HWND hWnd, int col, int row, LPCVOID data);
BOOL QUILLAPI HGSetCellString(HWND hWnd, int col, int row, LPCVOID data); /* HGSetCellData */
int QUILLAPI HGGetCellText(HWND hWnd, int col, int row, LPSTR buffer, int size);
BOOL QUILLAPI HGSetCellText(HWND hWnd, int col, int row, LPCSTR text);
BOOL QUILLAPI HGridInvalidateCell(HWND hWnd, int col, int row);
BOOL QUILLAPI HGridInvalidateRange(HWND hWnd, int firstCol, int firstRow, int lastCol, int lastRow);

/* ---- HList items ---- */
LONG QUILLAPI HLAddItem(HWND hWnd, LPVOID data);
LONG QUILLAPI HLAddItemEx(HWND hWnd, LPVOID data, LPVOID code);
LONG QUILLAPI HLInsertItem(HWND hWnd, LONG index, LPVOID data);
LONG QUILLAPI HLInsertItemEx(HWND hWnd, LONG index, LPVOID data, LPVOID code);
LONG QUILLAPI HLInsertStringEx(HWND hWnd, LONG index, LPCSTR dataText, LPCSTR codeText);
LONG QUILLAPI HLAddItems(HWND hWnd, LONG count, LPVOID items);
LONG QUILLAPI HLAddItemsEx(HWND hWnd, LONG count, LPVOID items, LPVOID codes);
LONG QUILLAPI HLInsertItems(HWND hWnd, LONG index, LONG count, LPVOID items);
LONG QUILLAPI HLInsertItemsEx(HWND hWnd, LONG index, LONG count, LPVOID items, LPVOID codes);
BOOL QUILLAPI HLEmptyList(HWND hWnd);
BOOL QUILLAPI HLDeleteItem(HWND hWnd, LONG index);
BOOL QUILLAPI HLDeleteItems(HWND hWnd, UINT how, LONG count, LPVOID items);
BOOL QUILLAPI HLMarkItems(HWND hWnd, UINT how, LONG count, LPVOID items);
BOOL QUILLAPI HLSelectItem(HWND hWnd, LONG index, UINT mode);
BOOL QUILLAPI HLSelectItems(HWND hWnd, UINT mode, UINT how, LONG count, LPVOID items);
LONG QUILLAPI HLSelectData(HWND hWnd, LPVOID key, UINT mode);
LONG QUILLAPI HLSelectCode(HWND hWnd, LPVOID key, UINT mode);
BOOL QUILLAPI HLIsSelected(HWND hWnd, LONG index);
LONG QUILLAPI HLFindData(HWND hWnd, LONG start, LPVOID key);
LONG QUILLAPI HLFindCode(HWND hWnd, LONG start, LPVOID key);
LONG QUILLAPI HLGetData(HWND hWnd, LONG index, LPVOID out);
LONG QUILLAPI HLGetCode(HWND hWnd, LONG index, LPVOID out);
BOOL QUILLAPI HLSetCode(HWND hWnd, LONG index, LPVOID value);
BOOL QUILLAPI HLGetItems(HWND hWnd, LONG count, UINT what, LPVOID out, UINT how, LPVOID items);
BOOL QUILLAPI HLSetDataLink(HWND hWnd, LPVOID link, BOOL select);
BOOL QUILLAPI HLSetCodeLink(HWND hWnd, LPVOID link, BOOL select);

/* ---- HButt ---- */
int QUILLAPI LoadDefTypeText(int type, LPSTR buffer, int size, LPCSTR text);

/* ---- HComb ---- */
LONG QUILLAPI HCAddItems(HWND hWnd, LONG count, LPVOID items);
LONG QUILLAPI HCAddItemsEx(HWND hWnd, LONG count, LPVOID items, LPVOID codes);
LONG QUILLAPI HCAddItemEx(HWND hWnd, LPVOID data, LPVOID code);
LONG QUILLAPI HCDeleteItems(HWND hWnd, UINT how, LONG count, LPVOID items);
LONG QUILLAPI HCGetItems(HWND hWnd, LONG count, UINT what, LPVOID out, UINT how, LPVOID items);
LONG QUILLAPI HCInsertItems(HWND hWnd, LONG index, LONG count, LPVOID items);
LONG QUILLAPI HCInsertItemsEx(HWND hWnd, LONG index, LONG count, LPVOID items, LPVOID codes);
LONG QUILLAPI HCInsertItemEx(HWND hWnd, LONG index, LPVOID data, LPVOID code);
LONG QUILLAPI HCInsertStringEx(HWND hWnd, LONG index, LPCSTR dataText, LPCSTR codeText);
int QUILLAPI GetDropHeight(LPCSTR *text);
LRESULT CALLBACK MouseHookProc(int code, WPARAM wParam, LPARAM lParam);

/* ---- HTool ---- */
#ifndef QUILL32_NATIVE
HWND QUILLAPI HToolCreate(HINSTANCE hInstance, LPCSTR templateName, HWND parent, HWND notify, DWORD style,
                          int id, int x, int y);
void QUILLAPI HToolUpdate(HWND hWnd);
#endif

/* @@SECTION functions: later families add their prototypes above this line */

#ifdef __cplusplus
}
#endif

#if defined(__cplusplus) && defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(HCtlBase) == 20, "HCtlBase layout");
static_assert(offsetof(HCtlBase, hFont) == 12 && offsetof(HCtlBase, wFlags) == 16, "HCtlBase layout");
static_assert(offsetof(HCtlBaseEx, dwStyle) == 18 && offsetof(HCtlBaseEx, wExtra) == 22, "HCtlBaseEx layout");
static_assert(sizeof(HCtlBaseEx) == 24, "HCtlBaseEx layout");
static_assert(sizeof(HGField) == 36 && offsetof(HGField, editorStyle) == 16 &&
              offsetof(HGField, offset) == 28 && offsetof(HGField, editor) == 32, "HGField layout");
static_assert(sizeof(HGridData) == 40 && offsetof(HGridData, style) == 4 &&
              offsetof(HGridData, minRows) == 20 && offsetof(HGridData, name) == 24 &&
              offsetof(HGridData, fieldMap) == 36, "HGridData layout");
static_assert(offsetof(HGRecord, recordStatus) == 4 && offsetof(HGRecord, cells) == 6, "HGRecord layout");
static_assert(sizeof(OFSTRUCT) == 136, "OFSTRUCT layout");
static_assert(offsetof(HGStashEntry, grid) == 12 && offsetof(HGStashEntry, name) == 16 &&
              offsetof(HGStashEntry, file) == 30 && sizeof(HGStashEntry) == 168, "HGStashEntry layout");
static_assert(offsetof(HGridWindow, hBrush) == 20 && offsetof(HGridWindow, rowBase) == 28 &&
              offsetof(HGridWindow, curRow) == 44 && offsetof(HGridWindow, hBar) == 48 &&
              offsetof(HGridWindow, grid) == 60 && offsetof(HGridWindow, cacheSize) == 68 &&
              offsetof(HGridWindow, vScale) == 72 && offsetof(HGridWindow, dataProc) == 92 &&
              sizeof(HGridWindow) == 96, "HGridWindow layout");
static_assert(offsetof(HImage, handle) == 4 && offsetof(HImage, palette) == 8 && sizeof(HImage) == 12, "HImage layout");
static_assert(sizeof(HLList) == 52 && offsetof(HLList, flags) == 36 && offsetof(HLList, cursor) == 48, "HLList layout");
#endif
#if defined(__cplusplus)
static_assert(sizeof(HNumMask) == 14 && offsetof(HNumMask, fracLiterals) == 10 &&
              offsetof(HNumMask, flags) == 12, "HNumMask layout");
static_assert(sizeof(HDateTime) == 10 && offsetof(HDateTime, wMillisecond) == 8, "HDateTime layout");
#endif

#endif /* RC_INVOKED */
#endif /* QUILL32_H */
