// Reserved ids of menu commands. Threads and objects reach the main frame only by posting one of
// these (PostMenuEvent); ids with a menu item are listed here too, so that no two meanings collide.
#pragma once

enum MenuEventId : int {
    ID_ABOUT = 5014,
    ID_QUIT = 5006,
    ID_DIALOG_OK = 5100,
    ID_DIALOG_CLOSE = 5101, ///< also "Cancel"

    ID_OPEN_PROJECT = 6000,
    ID_SAVE_PROJECT = 6001,
    ID_SAVE_PROJECT_AS = 6002,
    ID_LOAD_DATA = 6003,
    ID_EXPORT_MENU = 6004,
    ID_EXPORT_DATA = 6005,
    ID_EXPORT_PATH_POV = 6006,
    ID_SAVE_IMAGE_SNAP = 6007,
    ID_SAVE_IMAGE_SEQ = 6008,
    ID_CLOSE_DATA = 6009,
    ID_UNDO = 6011,
    ID_REDO = 6012,
    ID_GO = 6013,
    ID_TIME_REMAP = 6014,
    ID_SCENE = 6015,
    ID_PREFERENCE = 6016,

    ID_REFRESH_GL = 6017,           ///< every view is stale
    ID_REFRESH_TL = 6018,           ///< time control and time lines changed
    ID_REFRESH_SB = 6019,           ///< status bar text
    ID_REFRESH_ATTRIB = 6020,       ///< attribute, option and exposure pages
    ID_REFRESH_IMGSEQ = 6021,       ///< image sequence dialog
    ID_REFRESH_CAM_CONF = 6022,     ///< camera dialog
    ID_REFRESH_COLOR = 6023,        ///< colour curve editor
    ID_REFRESH_EXPORTER = 6024,     ///< exporter dialog
    ID_REFRESH_DRAW_OPTIONS = 6025, ///< option, overlay and exposure pages
    ID_REFRESH_LIGHT = 6026,        ///< light dialog
    ID_REFRESH_EXPOSURE = 6027,     ///< exposure page
    ID_REFRESH_STEREO = 6028,       ///< stereogram dialog
    ID_REFRESH_TEXTURE = 6029,      ///< texture dialog
    ID_RESIZED_TL = 6030,           ///< the time lines changed their height

    ID_REMOVE_CACHE_MENU = 6031,
    ID_REMOVE_CACHE_SNAP = 6032,
    ID_REMOVE_CACHE_ALL = 6033,
    ID_SHORTCUT = 6034,     ///< a text field hands back GShortcutKeycode, GShortcutModifier
    ID_SYNC_GL_CTRL = 6035, ///< panels copy their canvas's settings into their controls
    ID_VIEW_PANEL_TYPE_0 = 6036,
    ID_VIEW_PANEL_TYPE_1 = 6037,
    ID_VIEW_PANEL_TYPE_2 = 6038,
    ID_VIEW_PANEL_TYPE_3 = 6039,
    ID_VIEW_PANEL_TYPE_4 = 6040,
    ID_VIEW_EXTRA = 6041,
    ID_DESELECT = 6042,
    ID_CAMERA_PATH = 6043,
    ID_LIGHT_SOURCE = 6044,
    ID_COLOR_CURVE = 6045,
    ID_TEX_PROPERTY = 6046,
    ID_POVRAY = 6047,
    ID_STEREOGRAM = 6048,
    ID_PERIODIC_BOUNDARY = 6049,
    ID_UNLOCK = 6050,
    ID_SPECIAL = 6051,
    ID_ABOUT_GL = 6052,
    ID_PLAY_STOP = 6053,
    ID_SET_KEY_POS = 6054,
    ID_SET_KEY_POS_ROT = 6055,
    ID_SET_KEY_ANC = 6056,
    ID_SAVE_IMGSEQ_BEGIN = 6057,
    ID_EXPORT_DATA_BEGIN = 6058,
    ID_FILTER_POPUP = 6060,
    ID_FILTER_REFRESH = 6061,
    ID_FILTER_MANIPULATE = 6062,
    ID_FILTER_RESIZE = 6063,
    ID_FILTER_BOOL_MENU = 6064,
    ID_FILTER_BOOLEAN = 6065,
    ID_FILTER_OBJECT_MENU = 6066,
    ID_FILTER_DATABOX = 6067,
    ID_FILTER_WORLD_MENU = 6068,
    ID_FILTER_OBJECT = 6069,
    ID_FILTER_GRID = 6070,
    ID_FILTER_FOG = 6071,
    ID_FILTER_FILTERING = 6072,
    ID_FILTER_COPYBOX = 6073,
    ID_FILTER_STICK = 6074,
    ID_FILTER_DELETE = 6075,
    ID_FILTER_UP = 6076,
    ID_FILTER_DOWN = 6077,
    ID_POV_EXPORT_SNAP = 6081,
    ID_POV_EXPORT_ANIM = 6082,
    ID_POV_RENDER_SNAP = 6083,
    ID_POV_RENDER_ANIM = 6084,
    ID_POV_RENDER_END = 6085,

    ID_RECENT_PROJECTS_MENU = 6700,
    ID_RECENT_PROJECT_0 = 6701, ///< to 6709, in the order of the list
    ID_RECENT_DATA_MENU = 6710,
    ID_RECENT_DATA_0 = 6711, ///< to 6719

    ID_COPY_VIEW = 6720,
    ID_FIT_VIEW = 6721, ///< the active view
    ID_TOOL_BAR = 6722,
    ID_GUESS_DATA = 6730,
    ID_FOLLOW = 6731, ///< new snapshots of a simulation that is still running
    ID_FOLLOW_NEWEST = 6732,
    ID_SAVE_REPORT = 6733,
    ID_POV_TRY = 6740, ///< the present frame, small, for its time

    ID_EXPORTER_HEAD_UP = 6501,
    ID_EXPORTER_HEAD_DOWN = 6502,
    ID_EXPORTER_BODY_UP = 6503,
    ID_EXPORTER_BODY_DOWN = 6504,
    ID_EXPORTER_DEFAULT = 6505,
    ID_BOUNDARY_SIZE = 6506,
    ID_EXPORTER_EXPORT = 6507,
    ID_EXPORTER_REFERENCE = 6508,
    ID_EXPORTER_COPY = 6509,

    ID_VIEW_DEFAULT = 6532, ///< of a tab of the camera dialog

    ID_LIGHT_ADD = 6523,
    ID_LIGHT_REMOVE = 6524,

    ID_CANVAS_MOVE_TO_CAM = 6546,
    ID_CANVAS_SET_KEY_POS = 6547,
    ID_CANVAS_SET_KEY_POS_ROT = 6548,
    ID_CANVAS_SET_KEY_ANC = 6549,
    ID_CANVAS_TOGGLE_LINK = 6550,
    ID_CANVAS_TOGGLE_PERSPECTIVE = 6551,
    ID_CANVAS_SHOW_CONTROLS = 6552,
    ID_CANVAS_DISTORTION = 6553,
    ID_CANVAS_FISHEYE_GRID = 6554,
    ID_CANVAS_VIEW_ANGLE = 6555,
    ID_CANVAS_FIT_VIEW = 6556,

    ID_NOTEBOOK_ATTRIB = 9001,
    ID_NOTEBOOK_OPTION = 9002,
    ID_NOTEBOOK_FILTER = 9003,
};
