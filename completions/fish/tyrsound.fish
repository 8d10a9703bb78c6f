# fish completion of tyrsound; made by scripts/completions.py
complete -c tyrsound -o df -d 'Resource/defaults file name' -r
complete -c tyrsound -o na -d 'Program name' -r
complete -c tyrsound -o h -d 'Print this help'
complete -c tyrsound -o ba -d 'Run program in batch mode'
complete -c tyrsound -o me -d 'Message level to be displayed:' -x -a 'none print error warn mess out1 out2 out3 out4 debug'
complete -c tyrsound -o fp -d 'File path' -r
complete -c tyrsound -o dp -d 'Raw data path' -r
complete -c tyrsound -o cf -d 'City database file name' -r
complete -c tyrsound -o cu -d 'Use current data file' -x
complete -c tyrsound -o id -d 'Specific station identifier' -x
complete -c tyrsound -o va -d 'Variable to be plotted or contoured' -x
complete -c tyrsound -o ta -d 'Prints a table'
complete -c tyrsound -o of -d 'Output file type' -r
complete -c tyrsound -o ou -d 'Type of output' -r
complete -c tyrsound -o pf -d 'File parameters: use,calc,over,app' -x -a 'use calc over app'
complete -c tyrsound -o pl -d 'Plot type: cf,lcf,ln,dln,ndln,value,none' -x -a 'cf lcf ln dln ndln value none'
complete -c tyrsound -o pp -d 'Plot parameters' -x
complete -c tyrsound -o dr -d 'Draw components: text,data,sum,map,none' -x -a 'text data sum map none'
complete -c tyrsound -o fl -d 'List of fonts to use' -r
complete -c tyrsound -o ct -d 'Color table file name' -r
complete -c tyrsound -o cot -d 'Text color' -x
complete -c tyrsound -o cowd -d 'Wind barb colors' -x
complete -c tyrsound -o coh -d 'Hodograph colors' -x
complete -c tyrsound -o de -d 'Output device: d,p,q,w,m' -x -a 'd p q h m i w'
complete -c tyrsound -o ti -d 'Window title' -x
complete -c tyrsound -o ic -d 'Open window iconified'
complete -c tyrsound -o bg -d 'Background color' -x
complete -c tyrsound -o ge -d 'Window geometry' -x
complete -c tyrsound -l help -d 'Print the help'
complete -c tyrsound -l version -d 'Print the version'
