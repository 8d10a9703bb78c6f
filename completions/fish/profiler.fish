# fish completion of profiler; made by scripts/completions.py
complete -c profiler -o df -d 'Resource/defaults file name' -r
complete -c profiler -o na -d 'Program name' -r
complete -c profiler -o h -d 'Print this help'
complete -c profiler -o ba -d 'Run program in batch mode'
complete -c profiler -o me -d 'Message level to be displayed:' -x -a 'none print error warn mess out1 out2 out3 out4 debug'
complete -c profiler -o fp -d 'File path' -r
complete -c profiler -o dp -d 'Raw data path' -r
complete -c profiler -o cp -d 'Converted data path' -r
complete -c profiler -o rp -d 'Raw files path' -r
complete -c profiler -o gp -d 'Gridded data path' -r
complete -c profiler -o ip -d 'Image file path' -r
complete -c profiler -o wp -d 'Watch file data path' -r
complete -c profiler -o tp -d 'Text file path' -r
complete -c profiler -o mp -d 'Model file path' -r
complete -c profiler -o sp -d 'Satellite file path' -r
complete -c profiler -o cf -d 'City database file name' -r
complete -c profiler -o mf -d 'Map database files' -r
complete -c profiler -o nc -d 'Naming convention file name' -r
complete -c profiler -o if -d 'Input data file type' -r
complete -c profiler -o of -d 'Output file type' -r
complete -c profiler -o pf -d 'File parameters: use,calc,over,app' -x -a 'use calc over app'
complete -c profiler -o cu -d 'Use current data file' -x
complete -c profiler -o ho -d 'Actual hour of the file' -x
complete -c profiler -o nh -d 'Number of hours to view' -x
complete -c profiler -o id -d 'Specific station identifier' -x
complete -c profiler -o pd -d 'Output plot domain' -x
complete -c profiler -o gd -d 'Grid domain' -x
complete -c profiler -o re -d 'Region to be used for plotting and gridding' -x -a 'us ne at se mw sp nw sw na eur world'
complete -c profiler -o pr -d 'Priority of stations used in the plot' -x
complete -c profiler -o va -d 'Variable to be plotted or contoured' -x
complete -c profiler -o le -d 'Vertical level to be plotted or contoured' -x
complete -c profiler -o pl -d 'Plot type: cf,lcf,ln,dln,ndln,value,none' -x -a 'cf lcf ln dln ndln value none'
complete -c profiler -o sc -d 'Text and wind vector scale factor' -x
complete -c profiler -o fm -d 'Numeric format' -x
complete -c profiler -o pp -d 'Plot parameters' -x
complete -c profiler -o dr -d 'Draw components: text,data,sum,map,none' -x -a 'text data sum map none'
complete -c profiler -o la -d 'Plot labels' -x
complete -c profiler -o in -d 'Contour interval' -x
complete -c profiler -o cb -d 'Color fill contour/vector base value' -x
complete -c profiler -o fl -d 'List of fonts to use' -r
complete -c profiler -o ct -d 'Color table file name' -r
complete -c profiler -o cot -d 'Text color' -x
complete -c profiler -o cod -d 'Data plotting color' -x
complete -c profiler -o com -d 'line map color' -x
complete -c profiler -o cogr -d 'grid color' -x
complete -c profiler -o coln -d 'Lat-lon line color' -x
complete -c profiler -o cowd -d 'Wind barb colors' -x
complete -c profiler -o cocd -d 'Cloud cover symbol colors' -x
complete -c profiler -o cowx -d 'Weather symbol colors' -x
complete -c profiler -o cocm -d 'Fill map color' -x
complete -c profiler -o coco -d 'Line contour color' -x
complete -c profiler -o cof -d 'Fill contour colors' -x
complete -c profiler -o cola -d 'Line label color' -x
complete -c profiler -o cocl -d 'Fill label color' -x
complete -c profiler -o de -d 'Output device: d,p,q,w,m' -x -a 'd p q h m i w'
complete -c profiler -o ti -d 'Window title' -x
complete -c profiler -o ic -d 'Open window iconified'
complete -c profiler -o bg -d 'Background color' -x
complete -c profiler -o ge -d 'Window geometry' -x
complete -c profiler -l help -d 'Print the help'
complete -c profiler -l version -d 'Print the version'
