# fish completion of tyrplay; made by scripts/completions.py
complete -c tyrplay -o df -d 'Resource/defaults file name' -r
complete -c tyrplay -o na -d 'Program name' -r
complete -c tyrplay -o h -d 'Print this help'
complete -c tyrplay -o ba -d 'Run program in batch mode'
complete -c tyrplay -o me -d 'Message level to be displayed:' -x -a 'none print error warn mess out1 out2 out3 out4 debug'
complete -c tyrplay -o fp -d 'File path' -r
complete -c tyrplay -o ip -d 'Image file path' -r
complete -c tyrplay -o fl -d 'List of fonts to use' -r
complete -c tyrplay -o ct -d 'Color table file name' -r
complete -c tyrplay -o pp -d 'Plot parameters' -x
complete -c tyrplay -o de -d 'Output device: d,p,q,w,m' -x -a 'd p q h m i w'
complete -c tyrplay -o ti -d 'Window title' -x
complete -c tyrplay -o ic -d 'Open window iconified'
complete -c tyrplay -o bg -d 'Background color' -x
complete -c tyrplay -o ge -d 'Window geometry' -x
complete -c tyrplay -l help -d 'Print the help'
complete -c tyrplay -l version -d 'Print the version'
