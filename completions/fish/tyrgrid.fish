# fish completion of tyrgrid; made by scripts/completions.py
complete -c tyrgrid -o df -d 'Resource/defaults file name' -r
complete -c tyrgrid -o na -d 'Program name' -r
complete -c tyrgrid -o h -d 'Print this help'
complete -c tyrgrid -o ba -d 'Run program in batch mode'
complete -c tyrgrid -o me -d 'Message level to be displayed:' -x -a 'none print error warn mess out1 out2 out3 out4 debug'
complete -c tyrgrid -o fp -d 'File path' -r
complete -c tyrgrid -o gp -d 'Gridded data path' -r
complete -c tyrgrid -o ip -d 'Image file path' -r
complete -c tyrgrid -o cf -d 'City database file name' -r
complete -c tyrgrid -o mf -d 'Map database files' -r
complete -c tyrgrid -o gn -d 'Specific grid index in file to use' -r
complete -c tyrgrid -o va -d 'Variable to be plotted or contoured' -x
complete -c tyrgrid -o le -d 'Vertical level to be plotted or contoured' -x
complete -c tyrgrid -o ft -d 'Forecast time to be plotted or contoured' -x
complete -c tyrgrid -o ta -d 'Prints a table'
complete -c tyrgrid -o of -d 'Output file type' -r
complete -c tyrgrid -o ou -d 'Type of output' -r
complete -c tyrgrid -o pf -d 'File parameters: use,calc,over,app' -x -a 'use calc over app'
complete -c tyrgrid -o gd -d 'Grid domain' -x
complete -c tyrgrid -o pd -d 'Output plot domain' -x
complete -c tyrgrid -o re -d 'Region to be used for plotting and gridding' -x -a 'us ne at se mw sp nw sw na eur world'
complete -c tyrgrid -o pl -d 'Plot type: cf,lcf,ln,dln,ndln,value,none' -x -a 'cf lcf ln dln ndln value none'
complete -c tyrgrid -o sc -d 'Text and wind vector scale factor' -x
complete -c tyrgrid -o fm -d 'Numeric format' -x
complete -c tyrgrid -o pp -d 'Plot parameters' -x
complete -c tyrgrid -o dr -d 'Draw components: text,data,sum,map,none' -x -a 'text data sum map none'
complete -c tyrgrid -o la -d 'Plot labels' -x
complete -c tyrgrid -o in -d 'Contour interval' -x
complete -c tyrgrid -o cb -d 'Color fill contour/vector base value' -x
complete -c tyrgrid -o fl -d 'List of fonts to use' -r
complete -c tyrgrid -o ct -d 'Color table file name' -r
complete -c tyrgrid -o cot -d 'Text color' -x
complete -c tyrgrid -o com -d 'line map color' -x
complete -c tyrgrid -o cogr -d 'grid color' -x
complete -c tyrgrid -o coln -d 'Lat-lon line color' -x
complete -c tyrgrid -o cocm -d 'Fill map color' -x
complete -c tyrgrid -o coco -d 'Line contour color' -x
complete -c tyrgrid -o cof -d 'Fill contour colors' -x
complete -c tyrgrid -o cola -d 'Line label color' -x
complete -c tyrgrid -o cocl -d 'Fill label color' -x
complete -c tyrgrid -o de -d 'Output device: d,p,q,w,m' -x -a 'd p q h m i w'
complete -c tyrgrid -o ti -d 'Window title' -x
complete -c tyrgrid -o ic -d 'Open window iconified'
complete -c tyrgrid -o bg -d 'Background color' -x
complete -c tyrgrid -o ge -d 'Window geometry' -x
complete -c tyrgrid -o inp -d 'Type of input' -r
complete -c tyrgrid -l help -d 'Print the help'
complete -c tyrgrid -l version -d 'Print the version'
