function build_veloxd(headers, libraries)
%BUILD_VELOXD  Compile what the package veloxd calls, veloxd_mex, into the folder of this file.
%   BUILD_VELOXD(HEADERS, LIBRARIES) takes the folder of VELOxdDll.h and veloxd_blocks.h, and those of the libraries
%   VELOxdDll and VELOxdBlocks (a path, or a cell of paths). In MATLAB it takes a C compiler (mex -setup C).
    headers = char(headers);
    libraries = cellstr(libraries);
    here = fileparts(mfilename('fullpath'));
    sources = strcat(here, {'/veloxd_mex.c', '/failures.c', '/file_names.c'});
    folders = strcat('-L', libraries);
    names = {'-lVELOxdBlocks', '-lVELOxdDll'};
    output = [here '/veloxd_mex.' mexext()];
    if exist('OCTAVE_VERSION', 'builtin')
        [printed, status] = mkoctfile('--mex', ['-I' headers], sources{:}, folders{:}, names{:}, '-o', output);
        if status ~= 0
            error('veloxd:build', '%s', printed);
        end
    else
        mex('-R2018a', ['-I' headers], sources{:}, folders{:}, names{:}, '-output', output);
    end
end
