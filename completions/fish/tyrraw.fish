# fish completion of tyrraw; made by scripts/completions.py
complete -c tyrraw -o df -d 'Resource/defaults file name' -r
complete -c tyrraw -o na -d 'Program name' -r
complete -c tyrraw -o h -d 'Print this help'
complete -c tyrraw -o ba -d 'Run program in batch mode'
complete -c tyrraw -o me -d 'Message level to be displayed:' -x -a 'none print error warn mess out1 out2 out3 out4 debug'
complete -c tyrraw -o fp -d 'File path' -r
complete -c tyrraw -o rp -d 'Raw files path' -r
complete -c tyrraw -o gp -d 'Gridded data path' -r
complete -c tyrraw -o cf -d 'City database file name' -r
complete -c tyrraw -o cu -d 'Use current data file' -x
complete -c tyrraw -o id -d 'Specific station identifier' -x
complete -c tyrraw -o pa -d 'Program parameters' -x
complete -c tyrraw -o fm -d 'Numeric format' -x
complete -c tyrraw -o oa -d 'Objective analysis parameters' -r
complete -c tyrraw -o gd -d 'Grid domain' -x
complete -c tyrraw -o pd -d 'Output plot domain' -x
complete -c tyrraw -o re -d 'Region to be used for plotting and gridding' -x -a 'us ne at se mw sp nw sw na eur world'
complete -c tyrraw -o ou -d 'Type of output' -r
complete -c tyrraw -o pf -d 'File parameters: use,calc,over,app' -x -a 'use calc over app'
complete -c tyrraw -o pp -d 'Plot parameters' -x
complete -c tyrraw -l help -d 'Print the help'
complete -c tyrraw -l version -d 'Print the version'
