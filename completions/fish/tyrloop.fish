# fish completion of tyrloop; made by scripts/completions.py
complete -c tyrloop -o df -d 'Resource/defaults file name' -r
complete -c tyrloop -o na -d 'Program name' -r
complete -c tyrloop -o h -d 'Print this help'
complete -c tyrloop -o me -d 'Message level to be displayed:' -x -a 'none print error warn mess out1 out2 out3 out4 debug'
complete -c tyrloop -o fp -d 'File path' -r
complete -c tyrloop -o ip -d 'Image file path' -r
complete -c tyrloop -o fl -d 'List of fonts to use' -r
complete -c tyrloop -o pp -d 'Plot parameters' -x
complete -c tyrloop -o pa -d 'Program parameters' -x
complete -c tyrloop -o de -d 'Output device: d,p,q,w,m' -x -a 'd p q h m i w'
complete -c tyrloop -o ti -d 'Window title' -x
complete -c tyrloop -o ic -d 'Open window iconified'
complete -c tyrloop -o ge -d 'Window geometry' -x
complete -c tyrloop -o bg -d 'Background color' -x
complete -c tyrloop -o wn -d 'TYRLoop window number' -x
complete -c tyrloop -o of -d 'Output file type' -r
complete -c tyrloop -l help -d 'Print the help'
complete -c tyrloop -l version -d 'Print the version'
