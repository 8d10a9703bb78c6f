#include <algorithm>
#include <array>

#include "tyr/base/res.h"
#include "tyr/start/option_codes.h"
#include "tyr/start/option_table_private.h"

using namespace tyr;

namespace {

// Help of more than one line: all that follows the usage word, newlines and all.
constexpr const char *kMessageHelp =
    "  Message level to be displayed:\n"
    "               none,print,error,warn,mess,out1,*out2,out3,out4,debug\n";
constexpr const char *kObjectHelp = "\n"
                                    "             Objective analysis parameters\n";
constexpr const char *kPlotDomainHelp =
    "\n"
    "             Output plot domain\n"
    "               region=predefined region:\n"
    "                  us,ne,at,se,mw,sp,nw,sw,etc\n"
    "               proj=projection, clat=central latitude, clon=central longitude,\n"
    "               nx,ny=number of gridpoints and dx,dy=grid spacing\n";
constexpr const char *kGridDomainHelp =
    "\n"
    "             Grid domain\n"
    "               region=predefined region:\n"
    "                  us,ne,at,se,mw,sp,nw,sw,etc\n"
    "               proj=projection, clat=central latitude, clon=central longitude,\n"
    "               nx,ny=number of gridpoints and dx,dy=grid spacing\n";
constexpr const char *kRegionHelp =
    "\n"
    "             Region to be used for plotting and gridding\n"
    "               region=predefined region:\n"
    "                  us,ne,at,se,mw,sp,nw,sw,etc\n"
    "               proj=projection, clat=central latitude, clon=central longitude,\n"
    "               nx,ny=number of gridpoints and dx,dy=grid spacing\n"
    "               us,ne,at,se,mw,sp,nw,sw,var\n";

// clang-format off
constexpr std::array<OptionRow, 89> kRows = {{
    {kOptBackground, "bg", 0, "background", "tyrback", kResText, "-bg clr", "Background color"},
    {kOptBatch, "ba", 0, "batch", "tyrbatch", kResBatch, "-ba", "Run program in batch mode"},
    {kOptBullFile, "bf", 0, "bull_file", "tyrbullfile", kResText, "-bf file", "Bulletin file name"},
    {kOptCityFile, "cf", 0, "city_file", "tyrcity", kResText,
     "-cf file", "City database file name"},
    {kOptColorClabel, "cocl", 0, "color_clabel", "tyrclrclab", kResText,
     "-cocl clr", "Fill label color"},
    {kOptColorCloud, "cocd", 0, "color_cloud", "tyrclrcld", kResText,
     "-cocd clr", "Cloud cover symbol colors"},
    {kOptColorCmap, "cocm", 0, "color_cmap", "tyrclrcmap", kResText, "-cocm clr", "Fill map color"},
    {kOptColorCont, "coco", 0, "color_cont", "tyrclrcont", kResText,
     "-coco clr", "Line contour color"},
    {kOptColorData, "cod", 0, "color_data", "tyrclrdata", kResText,
     "-cod clr", "Data plotting color"},
    {kOptColorFill, "cof", 0, "color_fill", "tyrclrfill", kResText,
     "-cof clr[,...]", "Fill contour colors"},
    {kOptColorFront, "cofr", 0, "color_front", "tyrclrfront", kResText,
     "-cofr hclr,lclr,cclr,wclr,oclr,tclr", "Front colors"},
    {kOptColorGrid, "cogr", 0, "color_grid", "tyrclrgrid", kResText, "-cogr clr", "grid color"},
    {kOptColorHodo, "coh", 0, "color_hodo", "tyrclrhodo", kResText,
     "-coh dclr,sclr,hclr", "Hodograph colors"},
    {kOptColorHodtxt, "coht", 0, "color_hodtxt", "tyrclrhdtxt", kResText,
     "-coht dclr,sclr,hclr", "Hodograph text colors"},
    {kOptColorLabel, "cola", 0, "color_label", "tyrclrlab", kResText,
     "-cola clr", "Line label color"},
    {kOptColorLine, "coln", 0, "color_line", "tyrclrln", kResText,
     "-coln clr", "Lat-lon line color"},
    {kOptColorMap, "com", 0, "color_map", "tyrclrmap", kResText, "-com clr", "line map color"},
    {kOptColorPop, "copp", 0, "color_pop", "tyrclrpop", kResText,
     "-copp clr", "Probablilty of precipitation color"},
    {kOptColorSound, "cosd", 0, "color_sound", "tyrclrsnd", kResText,
     "-cosd tclr,tdclr", "Sounding colors"},
    {kOptColorTable, "ct", 0, "color_table", "tyrclrtbl", kResText,
     "-ct file", "Color table file name"},
    {kOptColorText, "cot", 0, "color_text", "tyrclrtext", kResText, "-cot clr", "Text color"},
    {kOptColorTherm, "coth", 0, "color_therm", "tyrclrtherm", kResText,
     "-coth pclr,tclr,daclr,maclr,mrclr", "Thermodynamic diagram colors"},
    {kOptColorThrmtxt, "cott", 0, "color_thrmtxt", "tyrclrthtxt", kResText,
     "-cott pclr,tclr,daclr,maclr,mrclr", "Thermodynamic diagram text colors"},
    {kOptColorWind, "cowd", 0, "color_wind", "tyrclrwind", kResText,
     "-cowd clr", "Wind barb colors"},
    {kOptColorWx, "cowx", 0, "color_wx", "tyrclrwx", kResText,
     "-cowx clr", "Weather symbol colors"},
    {kOptCommands, nullptr, 10, "command", "tyrcommand", kResList, "command", "Commands to be run"},
    {kOptCommand, "cd", 0, "command", "tyrcommand", kResText,
     "-cd cmd[;cmd]", "Commands to be run"},
    {kOptConBase, "cb", 0, "con_base", "tyrconbase", kResReal,
     "-cb base", "Color fill contour/vector base value"},
    {kOptConInterval, "in", 0, "con_interval", "tyrconint", kResReal,
     "-in intrvl", "Contour interval"},
    {kOptConPath, "cp", 0, "con_path", "tyrcon", kResPath, "-cp path", "Converted data path"},
    {kOptCurrent, "cu", 0, "current", "tyrcurrent", kResCurrent,
     "-cu [hour]", "Use current data file"},
    {kOptDataPath, "dp", 0, "data_path", "tyrdata", kResPath, "-dp path", "Raw data path"},
    {kOptDraw, "dr", 0, "draw", "tyrdraw", kResDraw,
     "-dr param[,...]", "Draw components: text,data,sum,map,none"},
    {kOptDecodeHour, "dh", 0, "decode_hour", "tyrdecode", kResText,
     "-dh hour", "Actual hour to decode"},
    {kOptDevice, "de", 0, "device", "tyrdevice", kResDevice,
     "-de dev[,name]", "Output device: d,p,q,w,m"},
    {kOptFileParam, "pf", 0, "file_param", "tyrfileparam", kResFileParam,
     "-pf param", "File parameters: use,calc,over,app"},
    {kOptFilePath, "fp", 0, "file_path", "tyrfile", kResPath, "-fp path", "File path"},
    {kOptFile, nullptr, 1, "filename", "tyrfilename", kResTextCopy, "file", "Input file name"},
    {kOptFiles, nullptr, 10, "filename", "tyrfilename", kResList,
     "file [file...]", "Input file names"},
    {kOptFontList, "fl", 0, "font_list", "tyrfontlist", kResText,
     "-fl list", "List of fonts to use"},
    {kOptForecast, "fc", 0, "forecast", "tyrforecast", kResText,
     "-fc type", "Specific forecast product"},
    {kOptGeometry, "ge", 0, "geometry", "tyrgeometry", kResText, "-ge wxh+x+y", "Window geometry"},
    {kOptGridNum, "gn", 0, "grid_num", "tyrgridnum", kResText,
     "-gn number", "Specific grid index in file to use"},
    {kOptGridPath, "gp", 0, "grid_path", "tyrgrid", kResPath, "-gp path", "Gridded data path"},
    {kOptGridType, "gt", 0, "grid_type", "tyrgridtype", kResInt,
     "-gt number", "Specific grid type (number) to use"},
    {kOptHelp, "h", 0, "help", "tyrhelp", kResHelp, "-h", "Print this help"},
    {kOptHour, "ho", 0, "hour", "tyrhour", kResHour, "-ho hour", "Actual hour of the file"},
    {kOptIcon, "ic", 0, "icon", "tyricon", kResFlag, "-ic", "Open window iconified"},
    {kOptIdentifier, "id", 0, "identifier", "tyrident", kResText,
     "-id ident", "Specific station identifier"},
    {kOptImagePath, "ip", 0, "image_path", "tyrimage", kResText, "-ip path", "Image file path"},
    {kOptInFile, "if", 0, "in_file", "tyrinfile", kResText, "-if type", "Input data file type"},
    {kOptInFiles, "if", 0, "in_file", "tyrinfile", kResText,
     "-if type[,...]", "Input data file type"},
    {kOptIngestor, "di", 0, "ingestor", "tyringestor", kResIngestor,
     "-di name", "Ingestor type: tyr,whole,split,ldm,none"},
    {kOptInput, "in", 0, "input", "tyrin", kResText, "-in type", "Type of input"},
    {kOptLabel, "la", 0, "label", "tyrlabel", kResText, "-la label", "Plot labels"},
    {kOptLevel, "le", 0, "level", "tyrlevel", kResText,
     "-le level", "Vertical level to be plotted or contoured"},
    {kOptMapFile, "mf", 0, "map_file", "tyrmap", kResText, "-mf file[,file]", "Map database files"},
    {kOptMessage, "me", 0, "message", "tyrmess", kResMessage, "-me level", kMessageHelp, true},
    {kOptModel, "mo", 0, "model", "tyrmodel", kResText, "-mo model", "Specific model to use"},
    {kOptNameConv, "nc", 0, "name_conv", "tyrnameconv", kResNameConv,
     "-nc type", "Naming convention file name"},
    {kOptNumHour, "nh", 0, "num_hour", "tyrnumhour", kResText,
     "-nh hour[,step]", "Number of hours to view"},
    {kOptObjectParam, "oa", 0, "object_param", "tyrobject", kResText,
     "-oa smooth[,radinf,pass,conv,min]", kObjectHelp, true},
    {kOptOutFile, "of", 0, "out_file", "tyroutfile", kResText, "-of type", "Output file type"},
    {kOptOutput, "ou", 0, "output", "tyrout", kResText, "-ou type", "Type of output"},
    {kOptParameter, "pa", 0, "parameter", "tyrparam", kResText,
     "-pa param[,...]", "Program parameters"},
    {kOptPlotDomain, "pd", 0, "plot_domain", "tyrdomain", kResDomain,
     "-pd region or [proj],clat,clon[,nx,ny][,dx,dy]", kPlotDomainHelp, true},
    {kOptPlotFormat, "fm", 0, "plot_format", "tyrformat", kResText, "-fm format", "Numeric format"},
    {kOptPlotParam, "pp", 0, "plot_param", "tyrpltparam", kResText, "-pp param", "Plot parameters"},
    {kOptPlotScale, "sc", 0, "plot_scale", "tyrscale", kResReal,
     "-sc scale", "Text and wind vector scale factor"},
    {kOptPlotType, "pl", 0, "plot_type", "tyrplot", kResPlotType,
     "-pl type", "Plot type: cf,lcf,ln,dln,ndln,value,none"},
    {kOptProduct, "ph", 0, "product", "tyrproduct", kResText,
     "-ph header", "Specific product header"},
    {kOptRawPath, "rp", 0, "raw_path", "tyrraw", kResPath, "-rp path", "Raw files path"},
    {kOptRegion, "re", 0, "region", "tyrregion", kResRegion,
     "-re region or [proj],clat,clon[,nx,ny][,dx,dy]", kRegionHelp, true},
    {kOptStatPrior, "pr", 0, "stat_prior", "tyrprior", kResInt,
     "-pr prior", "Priority of stations used in the plot"},
    {kOptState, "st", 0, "state", "tyrstate", kResText, "-st state", "Specific state to parse"},
    {kOptTable, "ta", 0, "table", "tyrtable", kResFlag, "-ta", "Prints a table"},
    {kOptTime, "ft", 0, "time", "tyrtime", kResText,
     "-ft time", "Forecast time to be plotted or contoured"},
    {kOptTitle, "ti", 0, "title", "tyrtitle", kResText, "-ti title", "Window title"},
    {kOptValue, nullptr, 10, "value", "tyrvalue", kResList, "val1 val2 ...", "Input values:"},
    {kOptVariable, "va", 0, "variable", "tyrvar", kResText,
     "-va var", "Variable to be plotted or contoured"},
    {kOptWatchPath, "wp", 0, "watch_path", "tyrwatch", kResPath,
     "-wp path", "Watch file data path"},
    {kOptWindowNum, "wn", 0, "window_num", "tyrwindownum", kResInt,
     "-wn number", "TYRLoop window number"},
    {kOptColorWatch, "cowa", 0, "color_watch", "tyrclrwatch", kResText,
     "-cowa sclr,tclr", "Watch box colors"},
    {kOptLogFile, "lf", 0, "log_file", "tyrlog", kResText, "-lf file", "Log file name"},
    {kOptGridDomain, "gd", 0, "grid_domain", "tyrgrddomain", kResDomain,
     "-gd region or [proj],clat,clon[,nx,ny][,dx,dy]", kGridDomainHelp, true},
    {kOptInputLong, "inp", 0, "input", "tyrin", kResText, "-in type", "Type of input"},
    {kOptTextPath, "tp", 0, "text_path", "tyrtext", kResPath, "-tp path", "Text file path"},
    {kOptModelPath, "mp", 0, "model_path", "tyrmpath", kResPath, "-mp path", "Model file path"},
    {kOptSatPath, "sp", 0, "sat_path", "tyrsat", kResPath, "-sp path", "Satellite file path"}
}};
// clang-format on

} // namespace

const OptionRow *tyr::option_row(int code)
{
    const auto row = std::find_if(kRows.begin(), kRows.end(),
                                  [code](const OptionRow &r) { return r.code == code; });
    return row == kRows.end() ? nullptr : &*row;
}
