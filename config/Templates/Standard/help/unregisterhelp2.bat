rem Unregisters the help collection %%projectgroup_name%%.
hxreg -r -n %%hhnamespace%%
